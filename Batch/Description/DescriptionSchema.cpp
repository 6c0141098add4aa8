#include "Description/DescriptionSchema.h"

#include <unordered_map>

namespace
{

struct Elements
{
    Content content;
    std::vector<std::string> tags;
};

/// All that the versions of GenApi have had so far.
const std::vector<Elements>& Table()
{
    static const std::vector<Elements> table = {
        {Content::Text,
            {"AccessMode", "CacheChunkData", "Cachable", "ChunkID", "Description", "DisplayName", "DisplayNotation",
                "DocuURL", "Endianess", "EventID", "Expression", "Extension", "FeatureID", "Formula", "FormulaFrom",
                "FormulaTo", "ImposedAccessMode", "ImposedVisibility", "Input", "IsDeprecated", "IsLinear",
                "IsSelfClearing", "Key", "Representation", "Sign", "Slope", "Streamable", "SwapEndianess", "Symbolic",
                "ToolTip", "Unit", "ValidValueSet", "Visibility"}},
        {Content::WholeNumber, {"Address", "Bit", "CommandValue", "DisplayPrecision", "LSB", "Length", "MSB",
                                   "OffValue", "OnValue", "PollingTime", "Timeout"}},
        {Content::RealNumber, {"Constant", "NumericValue"}},
        {Content::NumberOfNode, {"Inc", "Max", "Min", "Value", "ValueDefault", "ValueIndexed"}},
        {Content::Node, {"p1212Parser", "pAlias", "pCastAlias", "pDependent", "pEnumEntry", "pError", "pFeature",
                            "pInvalidator", "pPort", "pSelected", "pSelecting", "pTerminal"}},
        {Content::NodeWithValue, {"pAddress", "pBlockPolling", "pChunkID", "pCommandValue", "pInc", "pIndex",
                                     "pIsAvailable", "pIsImplemented", "pIsLocked", "pLength", "pMax", "pMin", "pValue",
                                     "pValueCopy", "pValueDefault", "pValueIndexed", "pVariable"}}};
    return table;
}

const std::vector<Need>& Needs()
{
    static const std::vector<std::string_view> registers = {
        "IntReg", "MaskedIntReg", "FloatReg", "StringReg", "Register", "StructReg"};
    static const std::vector<Need> needs = {
        {registers, {"pPort"}, "pPort"},
        {registers, {"Address", "pAddress", "pIndex", "IntSwissKnife", "SwissKnife"}, "Address"},
        {registers, {"Length", "pLength"}, "Length"},
        {{"MaskedIntReg", "StructEntry"}, {"Bit", "LSB"}, "LSB"},
        {{"MaskedIntReg", "StructEntry"}, {"Bit", "MSB"}, "MSB"},
        {{"Integer", "Float", "Boolean", "Enumeration", "String", "Command"}, {"Value", "pValue", "pIndex"}, "value"},
        {{"EnumEntry"}, {"Value"}, "value"},
        {{"Command"}, {"CommandValue", "pCommandValue"}, "CommandValue"},
        {{"Converter", "IntConverter"}, {"pValue"}, "pValue"},
        {{"Converter", "IntConverter"}, {"FormulaFrom", "FormulaTo"}, "formula"},
        {{"SwissKnife", "IntSwissKnife"}, {"Formula"}, "formula"},
        {{"Enumeration"}, {"EnumEntry", "pEnumEntry"}, "entries"},
    };
    return needs;
}

} // namespace

Content ContentOf(const std::string& tag)
{
    static const auto contents = []
    {
        std::unordered_map<std::string_view, Content> all;
        for (const Elements& elements : Table())
            for (const std::string& element : elements.tags)
                all.emplace(element, elements.content);
        return all;
    }();
    const auto known = contents.find(tag);
    return known == contents.end() ? Content::Unknown : known->second;
}

bool CanContain(std::string_view outer, std::string_view inner)
{
    if (inner == "EnumEntry")
        return outer == "Enumeration";
    if (inner == "StructEntry")
        return outer == "StructReg";
    return inner == "IntSwissKnife" || inner == "SwissKnife"; // Addresses that are worked out.
}

const NodeKind* FindNodeKind(std::string_view tag)
{
    static const auto kinds = []
    {
        std::unordered_map<std::string_view, NodeKind> all;
        for (const std::string& each : NodeKinds())
            all[each];
        for (const Need& need : Needs())
            for (std::string_view each : need.kinds)
                all[each].needs.push_back(&need);
        for (const char* each : {"AdvFeatureLock", "ConfRom", "DcamLock", "IntKey", "Node", "SmartFeature", "TextDesc"})
            all[each].isRead = false;
        return all;
    }();
    const auto found = kinds.find(tag);
    return found == kinds.end() ? nullptr : &found->second;
}

const std::vector<std::string>& NodeKinds()
{
    static const std::vector<std::string> kinds = {"AdvFeatureLock", "Boolean", "Category", "Command", "ConfRom",
        "Converter", "DcamLock", "EnumEntry", "Enumeration", "Float", "FloatReg", "IntConverter", "IntKey", "IntReg",
        "IntSwissKnife", "Integer", "MaskedIntReg", "Node", "Port", "Register", "SmartFeature", "String", "StringReg",
        "StructEntry", "StructReg", "SwissKnife", "TextDesc"};
    return kinds;
}

const std::vector<std::string>& ElementsOfNodes()
{
    static const std::vector<std::string> elements = []
    {
        std::vector<std::string> all;
        for (const Elements& row : Table())
            all.insert(all.end(), row.tags.begin(), row.tags.end());
        return all;
    }();
    return elements;
}
