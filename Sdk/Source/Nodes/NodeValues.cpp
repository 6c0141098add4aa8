#include "Nodes/NodeValues.h"

#include "Base/Failure.h"
#include "Document/DocumentLimits.h"
#include "Nodes/NodeLinks.h"
#include "Nodes/NodeMap.h"

#include <algorithm>
#include <cstring>

namespace OPX::KltAPI
{
namespace
{

/// Reads or writes a register, past its node: that would keep a copy of it for as long as the node map lives.
template <class Function>
Failure Transfer(Function transfer, ArvGcRegister* node, UcharVector& bytes)
{
    ArvGcNode* port = nullptr;
    ForEachProperty(ARV_GC_NODE(node), [&port](ArvGcPropertyNode* property, ArvGcPropertyNodeType type)
        { port = type == ARV_GC_PROPERTY_NODE_TYPE_P_PORT ? arv_gc_property_node_get_linked_node(property) : port; });
    if (!ARV_IS_GC_PORT(port))
        return KltErrorNotFound;
    CallError error;
    const guint64 address = arv_gc_register_get_address(node, error.Out());
    if (error.Get() == nullptr && !bytes.empty())
        transfer(ARV_GC_PORT(port), bytes.data(), address, bytes.size(), error.Out());
    return error.Code();
}

} // namespace

KltFeatureDataType DataTypeOf(ArvGcNode* node)
{
    if (ARV_IS_GC_ENUMERATION(node))
        return KltFeatureDataEnum;
    if (ARV_IS_GC_BOOLEAN(node))
        return KltFeatureDataBool;
    if (ARV_IS_GC_COMMAND(node))
        return KltFeatureDataCommand;
    if (ARV_IS_GC_FLOAT(node))
        return KltFeatureDataFloat;
    if (ARV_IS_GC_INTEGER(node))
        return KltFeatureDataInt;
    if (ARV_IS_GC_STRING(node))
        return KltFeatureDataString;
    if (ARV_IS_GC_REGISTER(node))
        return KltFeatureDataRaw;
    return KltFeatureDataUnknown;
}

KltErrorType CodeOf(const FormulaError& error)
{
    const bool isTooLarge = error.What() == FormulaError::Overflow || error.What() == FormulaError::NotWhole;
    return isTooLarge ? KltErrorResources : KltErrorOther;
}

Number ReadNumber(ArvGcNode* node, GError** error)
{
    switch (DataTypeOf(node))
    {
    case KltFeatureDataEnum:
        return Number(arv_gc_enumeration_get_int_value(ARV_GC_ENUMERATION(node), error));
    case KltFeatureDataInt:
        return Number(arv_gc_integer_get_value(ARV_GC_INTEGER(node), error));
    case KltFeatureDataFloat:
        return Number(arv_gc_float_get_value(ARV_GC_FLOAT(node), error));
    case KltFeatureDataBool:
        return Number(std::int64_t(arv_gc_boolean_get_value(ARV_GC_BOOLEAN(node), error)));
    default:
        PassOn({KltErrorNotFound, {"A formula needs a node that is not there"}}, error);
        return Number();
    }
}

void WriteNumber(ArvGcNode* node, const Number& value, GError** error)
{
    switch (DataTypeOf(node))
    {
    case KltFeatureDataEnum:
        arv_gc_enumeration_set_int_value(ARV_GC_ENUMERATION(node), value.AsInteger(), error);
        break;
    case KltFeatureDataInt:
        arv_gc_integer_set_value(ARV_GC_INTEGER(node), value.AsInteger(), error);
        break;
    case KltFeatureDataFloat:
        arv_gc_float_set_value(ARV_GC_FLOAT(node), value.AsReal(), error);
        break;
    case KltFeatureDataBool:
        arv_gc_boolean_set_value(ARV_GC_BOOLEAN(node), value.AsReal() != 0 ? TRUE : FALSE, error);
        break;
    default:
        break;
    }
}

Failure ReadLength(ArvGcRegister* node, guint64& length)
{
    CallError error;
    length = arv_gc_register_get_length(node, error.Out());
    if (error.Get() == nullptr && length > static_cast<guint64>(MaximumValueLength))
        return KltErrorResources;
    return error.Code();
}

Failure ReadCapacity(ArvGcFeatureNode* node, guint64& length)
{
    ArvGcFeatureNode* const last = ValueChain(node).back();
    if (ARV_IS_GC_REGISTER(last))
        return ReadLength(ARV_GC_REGISTER(last), length);
    length = 0;
    return KltErrorSuccess;
}

Failure ReadText(ArvGcString* node, std::string& value)
{
    ArvGcFeatureNode* const last = ValueChain(ARV_GC_FEATURE_NODE(node)).back();
    if (ARV_IS_GC_REGISTER(last) && ARV_IS_GC_STRING(last))
    {
        UcharVector bytes;
        Failure failure = ReadBytes(ARV_GC_REGISTER(last), bytes);
        if (!failure)
            value.assign(bytes.begin(), std::find(bytes.begin(), bytes.end(), '\0'));
        return failure || !bytes.empty() ? failure : KltErrorInvalidValue;
    }
    CallError error;
    const char* text = arv_gc_string_get_value(node, error.Out());
    if (error.Get() == nullptr)
        value = text == nullptr ? "" : text;
    return error.Code();
}

Failure ReadBytes(ArvGcRegister* node, UcharVector& value)
{
    guint64 length = 0;
    if (Failure failure = ReadLength(node, length))
        return failure;
    UcharVector bytes(length);
    Failure failure = Transfer(arv_gc_port_read, node, bytes);
    if (!failure)
        value.swap(bytes);
    return failure;
}

Failure WriteText(ArvGcString* node, const char* value)
{
    ArvGcFeatureNode* const last = ValueChain(ARV_GC_FEATURE_NODE(node)).back();
    if (ARV_IS_GC_REGISTER(last) && ARV_IS_GC_STRING(last))
    {
        guint64 length = 0;
        if (Failure failure = ReadLength(ARV_GC_REGISTER(last), length))
            return failure;
        UcharVector bytes(value, value + std::strlen(value));
        bytes.resize(std::max<std::size_t>(bytes.size(), length));
        return WriteBytes(ARV_GC_REGISTER(last), bytes);
    }
    CallError error;
    const gint64 maximum = arv_gc_string_get_max_length(node, error.Out());
    if (error.Get() != nullptr)
        return error.Code();
    if (maximum > 0 && std::strlen(value) > static_cast<guint64>(maximum))
        return KltErrorInvalidValue;
    return Perform([&](GError** out) { arv_gc_string_set_value(node, value, out); });
}

Failure WriteBytes(ArvGcRegister* node, const UcharVector& value)
{
    guint64 length = 0;
    if (Failure failure = ReadLength(node, length))
        return failure;
    if (value.size() != length || length == 0)
        return KltErrorInvalidValue;
    UcharVector bytes = value;
    return Transfer(arv_gc_port_write, node, bytes);
}

Failure WriteCopies(ArvGcFeatureNode* node, const Number& value)
try
{
    const ValueCopies& copies = DescriptionOf(ARV_GC_NODE(node)).copies;
    for (ArvGcFeatureNode* each : copies.empty() ? NodeChain() : ValueChain(node))
    {
        const auto targets = copies.find(NameOf(each));
        if (targets != copies.end())
            for (const std::string& target : targets->second)
            {
                ArvGcNode* copy = arv_gc_get_node(arv_gc_node_get_genicam(ARV_GC_NODE(node)), target.c_str());
                if (Failure failure = Perform([&](GError** error) { WriteNumber(copy, value, error); }))
                    return failure;
            }
        if (ARV_IS_GC_CONVERTER(each)) // What follows has another value.
            break;
    }
    return KltErrorSuccess;
}
catch (const FormulaError& failure) // An integer is to be a copy of a real number that is too large.
{
    return {CodeOf(failure), {failure.what()}};
}

} // namespace OPX::KltAPI
