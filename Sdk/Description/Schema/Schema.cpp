#include "Schema/Schema.h"

#include <unordered_map>

namespace OPX::KltAPI
{
namespace
{

typedef std::vector<std::string> Words;

struct Elements
{
    Content content;
    Words tags;
};

/// All that the versions of GenApi have had so far.
const std::vector<Elements>& Table()
{
    static const std::vector<Elements> table = {
        {Content::Text,
            {"AccessMode", "CacheChunkData", "Cachable", "ChunkID", "Description", "DisplayName", "DisplayNotation",
                "DocuURL", "Endianess", "EventID", "Extension", "FeatureID", "ImposedAccessMode", "ImposedVisibility",
                "Input", "IsDeprecated", "IsLinear", "IsSelfClearing", "Key", "Representation", "Sign", "Slope",
                "Streamable", "SwapEndianess", "Symbolic", "ToolTip", "Unit", "ValidValueSet", "Visibility"}},
        {Content::Formula, {"Constant", "Expression", "Formula", "FormulaFrom", "FormulaTo"}},
        {Content::WholeNumber, {"Address", "Bit", "CommandValue", "DisplayPrecision", "LSB", "Length", "MSB",
                                   "OffValue", "OnValue", "PollingTime", "Timeout"}},
        {Content::RealNumber, {"NumericValue"}},
        {Content::NumberOfNode, {"Inc", "Max", "Min", "Value", "ValueDefault", "ValueIndexed"}},
        {Content::Node, {"p1212Parser", "pAlias", "pCastAlias", "pDependent", "pEnumEntry", "pError", "pFeature",
                            "pInvalidator", "pPort", "pSelected", "pSelecting", "pTerminal"}},
        {Content::NodeWithValue, {"pAddress", "pBlockPolling", "pChunkID", "pCommandValue", "pInc", "pIndex",
                                     "pIsAvailable", "pIsImplemented", "pIsLocked", "pLength", "pMax", "pMin", "pValue",
                                     "pValueCopy", "pValueDefault", "pValueIndexed", "pVariable"}}};
    return table;
}

/// Elements that a node may have more than one of.
const Words& Repeating()
{
    static const Words tags = {"Address", "Constant", "Expression", "Extension", "Input", "NumericValue", "pAddress",
        "pBlockPolling", "pDependent", "pEnumEntry", "pError", "pFeature", "pIndex", "pInvalidator", "pSelected",
        "pSelecting", "pTerminal", "pValueCopy", "pValueIndexed", "pVariable", "ValueIndexed"};
    return tags;
}

struct WordsOfElements
{
    Words tags;
    Words words;
};

const std::vector<WordsOfElements>& WordTable()
{
    static const std::vector<WordsOfElements> table = {{{"AccessMode", "ImposedAccessMode"}, {"RO", "WO", "RW"}},
        {{"Cachable"}, {"NoCache", "WriteThrough", "WriteAround"}},
        {{"CacheChunkData", "IsDeprecated", "IsLinear", "IsSelfClearing", "Streamable", "SwapEndianess"},
            {"Yes", "No"}},
        {{"Endianess"}, {"BigEndian", "LittleEndian"}},
        {{"Representation"},
            {"Linear", "Logarithmic", "Boolean", "PureNumber", "HexNumber", "IPV4Address", "MACAddress"}},
        {{"Sign"}, {"Signed", "Unsigned"}}, {{"Slope"}, {"Increasing", "Decreasing", "Varying", "Automatic"}},
        {{"ImposedVisibility", "Visibility"}, {"Beginner", "Expert", "Guru", "Invisible"}}};
    return table;
}

struct PlacesOfElements
{
    Words tags;
    std::vector<std::string_view> kinds;
};

/// Elements that do something in some nodes only. Nodes that the SDK does not read may hold what they like.
const std::vector<PlacesOfElements>& PlaceTable()
{
    static const std::vector<PlacesOfElements> table = {
        {{"AccessMode", "Cachable", "Endianess", "Sign"},
            {"Converter", "FloatReg", "IntConverter", "IntReg", "IntSwissKnife", "MaskedIntReg", "Port", "Register",
                "StringReg", "StructEntry", "StructReg", "SwissKnife"}},
        {{"Address", "pAddress", "Length", "pLength", "pPort"},
            {"FloatReg", "IntReg", "MaskedIntReg", "Register", "StringReg", "StructReg"}},
        {{"Bit", "LSB", "MSB"}, {"MaskedIntReg", "StructEntry"}}, {{"CommandValue", "pCommandValue"}, {"Command"}},
        {{"OffValue", "OnValue"}, {"Boolean"}}, {{"Formula"}, {"IntSwissKnife", "SwissKnife"}},
        {{"FormulaFrom", "FormulaTo"}, {"Converter", "IntConverter"}},
        {{"Constant", "Expression", "pVariable"}, {"Converter", "IntConverter", "IntSwissKnife", "SwissKnife"}},
        {{"pEnumEntry"}, {"Enumeration"}}, {{"pFeature"}, {"Category"}}};
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

KindSet UnreadKinds()
{
    KindSet set = 0;
    for (const std::string& each : NodeKinds())
        if (const NodeKind* kind = FindNodeKind(each); !kind->isRead)
            set |= kind->bit;
    return set;
}

KindSet SetOf(const std::vector<std::string_view>& kinds)
{
    static const KindSet unread = UnreadKinds();
    KindSet set = unread;
    for (std::string_view each : kinds)
        set |= FindNodeKind(each)->bit;
    return set;
}

} // namespace

const ElementKind* FindElementKind(std::string_view tag)
{
    static const auto kinds = []
    {
        std::unordered_map<std::string_view, ElementKind> all;
        for (const Elements& row : Table())
            for (const std::string& each : row.tags)
                all[each] = {all.size(), row.content};
        for (const std::string& each : Repeating())
            all.at(each).mayRepeat = true;
        for (const WordsOfElements& row : WordTable())
            for (const std::string& each : row.tags)
                all.at(each).words = &row.words;
        for (const PlacesOfElements& row : PlaceTable())
            for (const std::string& each : row.tags)
                all.at(each).places = SetOf(row.kinds);
        return all;
    }();
    const auto known = kinds.find(tag);
    return known == kinds.end() ? nullptr : &known->second;
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
            all[each].bit = 1U << all.size();
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

bool IsRead(std::string_view tag)
{
    const NodeKind* const kind = FindNodeKind(tag);
    return kind != nullptr && kind->isRead;
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

} // namespace OPX::KltAPI
