#include "KoltaCPP/Extensions.h"

#include "Base/TwoCalls.h"
#include "Camera/Impls.h"
#include "Document/Texts.h"
#include "Nodes/NodeRange.h"
#include "Nodes/NodeValues.h"

#include <algorithm>
#include <string>
#include <vector>

namespace OPX::KltAPI
{
namespace
{

/// Calls \a access with the feature's node and the connection.
template <class Access>
KltErrorType Ask(const Feature::Impl& feature, Access access)
{
    return feature.session->Use(feature.data.nodeName, access);
}

template <class Take>
KltErrorType AskRange(const Feature& feature, KltFeatureDataType type, Take take)
{
    const Feature::Impl& impl = Feature::Impl::Of(feature);
    if (impl.data.dataType != type)
        return KltErrorWrongType;
    return Ask(impl,
        [&](ArvGcFeatureNode* node, const Connection&) -> Failure
        {
            try
            {
                take(OnSteps(RangeOf(ARV_GC_NODE(node))));
                return KltErrorSuccess;
            }
            catch (const CallError& error)
            {
                return error.Code();
            }
        });
}

/// Hands out what \a textOf finds in the node.
template <class TextOf>
KltErrorType AskText(const Feature& feature, char* buffer, unsigned int& length, TextOf textOf)
{
    std::string text;
    const KltErrorType result = Ask(Feature::Impl::Of(feature),
        [&](ArvGcFeatureNode* node, const Connection&) -> Failure
        {
            const char* const found = textOf(node);
            text = InOneLine(found == nullptr ? "" : found);
            return KltErrorSuccess;
        });
    return result == KltErrorSuccess ? DeliverText(text, buffer, length) : result;
}

void AddName(ArvGcNode* node, std::vector<std::string>& names)
{
    if (ARV_IS_GC_FEATURE_NODE(node))
        names.push_back(WithoutControls(NameOf(ARV_GC_FEATURE_NODE(node))));
}

} // namespace

KltErrorType GetRange(const Feature& feature, KltInt64_t& minimum, KltInt64_t& maximum, KltInt64_t& increment)
{
    return AskRange(feature, KltFeatureDataInt,
        [&](const Range& range)
        {
            minimum = static_cast<KltInt64_t>(range.minimum);
            maximum = static_cast<KltInt64_t>(range.maximum);
            increment = static_cast<KltInt64_t>(std::max(range.increment, 1.0L));
        });
}

KltErrorType GetRange(const Feature& feature, double& minimum, double& maximum, double& increment)
{
    return AskRange(feature, KltFeatureDataFloat,
        [&](const Range& range)
        {
            minimum = static_cast<double>(range.minimum);
            maximum = static_cast<double>(range.maximum);
            increment = static_cast<double>(range.increment);
        });
}

KltErrorType GetLength(const Feature& feature, KltInt64_t& maximum)
{
    const Feature::Impl& impl = Feature::Impl::Of(feature);
    if (impl.data.dataType != KltFeatureDataString && impl.data.dataType != KltFeatureDataRaw)
        return KltErrorWrongType;
    return Ask(impl,
        [&](ArvGcFeatureNode* node, const Connection&)
        {
            guint64 length = 0;
            Failure failure = ReadCapacity(node, length);
            if (!failure)
                maximum = static_cast<KltInt64_t>(length);
            return failure;
        });
}

KltErrorType GetAccessNow(const Feature& feature, KltFeatureFlagsType& flags)
{
    const Feature::Impl& impl = Feature::Impl::Of(feature);
    return Ask(impl,
        [&](ArvGcFeatureNode* node, const Connection& connection) -> Failure
        {
            KltFeatureFlagsType possible = KltFeatureFlagsNone;
            for (const KltFeatureFlagsType flag : {KltFeatureFlagsRead, KltFeatureFlagsWrite})
            {
                if ((impl.data.flags & flag) == 0 || impl.data.isDelivered)
                    continue;
                Failure failure = CheckState(node, flag == KltFeatureFlagsWrite, connection.takeUnknown);
                if (failure && failure.code != KltErrorInvalidAccess)
                    return failure;
                possible |= failure ? KltFeatureFlagsNone : flag;
            }
            flags = possible;
            return KltErrorSuccess;
        });
}

KltErrorType GetAvailableEntries(const Feature& feature, EnumEntry* entries, unsigned int& count)
{
    const Feature::Impl& impl = Feature::Impl::Of(feature);
    if (impl.data.dataType != KltFeatureDataEnum)
        return KltErrorWrongType;
    std::vector<EnumEntry> available;
    const KltErrorType result = Ask(impl,
        [&](ArvGcFeatureNode* node, const Connection& connection) -> Failure
        {
            for (const EnumEntry& entry : impl.data.entries)
            {
                Failure failure =
                    CheckEntry(ARV_GC_ENUMERATION(node), EnumEntry::Impl::Of(entry).value, connection.takeUnknown);
                if (!failure)
                    available.push_back(entry);
                else if (failure.code != KltErrorInvalidAccess)
                    return failure;
            }
            return KltErrorSuccess;
        });
    return result == KltErrorSuccess ? DeliverList(available, entries, count) : result;
}

KltErrorType GetEntryName(const Feature& feature, KltInt64_t value, char* name, unsigned int& length)
{
    for (const EnumEntry& entry : Feature::Impl::Of(feature).data.entries)
        if (EnumEntry::Impl::Of(entry).value == value)
            return DeliverText(EnumEntry::Impl::Of(entry).name, name, length);
    return KltErrorNotFound;
}

KltErrorType GetEntryValue(const Feature& feature, const char* name, KltInt64_t& value)
{
    if (name == nullptr)
        return KltErrorBadParameter;
    for (const EnumEntry& entry : Feature::Impl::Of(feature).data.entries)
        if (EnumEntry::Impl::Of(entry).name == name)
        {
            value = EnumEntry::Impl::Of(entry).value;
            return KltErrorSuccess;
        }
    return KltErrorNotFound;
}

KltErrorType GetUnit(const Feature& feature, char* unit, unsigned int& length)
{
    return AskText(feature, unit, length,
        [](ArvGcFeatureNode* node)
        {
            if (ARV_IS_GC_FLOAT(node))
                return arv_gc_float_get_unit(ARV_GC_FLOAT(node));
            return ARV_IS_GC_INTEGER(node) ? arv_gc_integer_get_unit(ARV_GC_INTEGER(node)) : nullptr;
        });
}

KltErrorType GetDisplayName(const Feature& feature, char* name, unsigned int& length)
{
    return AskText(feature, name, length,
        [](ArvGcFeatureNode* node)
        {
            const char* const found = arv_gc_feature_node_get_display_name(node);
            return found == nullptr ? arv_gc_feature_node_get_name(node) : found;
        });
}

KltErrorType GetToolTip(const Feature& feature, char* toolTip, unsigned int& length)
{
    return AskText(feature, toolTip, length, &arv_gc_feature_node_get_tooltip);
}

KltErrorType GetHelp(const Feature& feature, char* help, unsigned int& length)
{
    return AskText(feature, help, length, &arv_gc_feature_node_get_description);
}

KltErrorType GetVisibility(const Feature& feature, FeatureVisibility& visibility)
{
    return Ask(Feature::Impl::Of(feature),
        [&](ArvGcFeatureNode* node, const Connection&) -> Failure
        {
            switch (arv_gc_feature_node_get_visibility(node))
            {
            case ARV_GC_VISIBILITY_EXPERT:
                visibility = FeatureVisibility::Expert;
                break;
            case ARV_GC_VISIBILITY_GURU:
                visibility = FeatureVisibility::Guru;
                break;
            case ARV_GC_VISIBILITY_INVISIBLE:
                visibility = FeatureVisibility::Invisible;
                break;
            default: // Also if nothing is said.
                visibility = FeatureVisibility::Beginner;
                break;
            }
            return KltErrorSuccess;
        });
}

KltErrorType GetSelected(const Feature& feature, FeaturePtr* features, unsigned int& count)
{
    const Feature::Impl& impl = Feature::Impl::Of(feature);
    std::vector<std::string> names;
    KltErrorType result = Ask(impl,
        [&](ArvGcFeatureNode* node, const Connection&) -> Failure
        {
            ForEachProperty(ARV_GC_NODE(node),
                [&](ArvGcPropertyNode* property, ArvGcPropertyNodeType type)
                {
                    if (type == ARV_GC_PROPERTY_NODE_TYPE_P_SELECTED)
                        AddName(arv_gc_property_node_get_linked_node(property), names);
                });
            return KltErrorSuccess;
        });
    FeaturePtrVector selected;
    for (const std::string& name : names)
    {
        FeaturePtr found;
        const KltErrorType known = impl.session->GetFeature(name, found);
        if (known == KltErrorSuccess)
            selected.push_back(found);
        else if (known != KltErrorNotFound) // A node that is no feature.
            result = known;
    }
    return result == KltErrorSuccess ? DeliverList(selected, features, count) : result;
}

} // namespace OPX::KltAPI
