#include "Schema/Schema.h"

#include <array>
#include <unordered_map>

namespace OPX::KltAPI
{
namespace
{

typedef Trait T;
typedef ElementKind E;

constexpr std::array<NodeKind, 27> NodeTable = {{
    {"AdvFeatureLock", 0, {}},
    {"Boolean", T::Read | T::Holder | T::Boolean, {}},
    {"Category", T::Read | T::Category, {}},
    {"Command", T::Read | T::Holder | T::Command, {}},
    {"ConfRom", 0, {}},
    {"Converter", T::Read | T::Formula | T::Converter | T::Real | T::Limited, {}},
    {"DcamLock", 0, {}},
    {"EnumEntry", T::Read | T::Entry, "Enumeration"},
    {"Enumeration", T::Read | T::Holder | T::Enumeration, {}},
    {"Float", T::Read | T::Holder | T::Plain | T::Real | T::Limited, {}},
    {"FloatReg", T::Read | T::Register | T::Numeric | T::Real, {}},
    {"IntConverter", T::Read | T::Formula | T::Converter | T::Limited, {}},
    {"IntKey", 0, {}},
    {"IntReg", T::Read | T::Register | T::Numeric, {}},
    {"IntSwissKnife", T::Read | T::Formula | T::Knife | T::Limited, {}},
    {"Integer", T::Read | T::Holder | T::Plain | T::Limited, {}},
    {"MaskedIntReg", T::Read | T::Register | T::Numeric | T::Masked, {}},
    {"Node", 0, {}},
    {"Port", T::Read | T::Port, {}},
    {"Register", T::Read | T::Register, {}},
    {"SmartFeature", 0, {}},
    {"String", T::Read | T::Holder | T::Text, {}},
    {"StringReg", T::Read | T::Register | T::Text, {}},
    {"StructEntry", T::Read | T::Masked, "StructReg"},
    {"StructReg", T::Read | T::Register | T::Numeric | T::Struct, {}},
    {"SwissKnife", T::Read | T::Formula | T::Knife | T::Real | T::Limited, {}},
    {"TextDesc", 0, {}},
}};

constexpr Words AccessModes = {{"RO", "WO", "RW"}};
constexpr Words Answers = {{"Yes", "No"}};
constexpr Words ByteOrders = {{"BigEndian", "LittleEndian"}};
constexpr Words CacheModes = {{"NoCache", "WriteThrough", "WriteAround"}};
constexpr Words Representations = {
    {"Linear", "Logarithmic", "Boolean", "PureNumber", "HexNumber", "IPV4Address", "MACAddress"}};
constexpr Words Signs = {{"Signed", "Unsigned"}};
constexpr Words Slopes = {{"Increasing", "Decreasing", "Varying", "Automatic"}};
constexpr Words Visibilities = {{"Beginner", "Expert", "Guru", "Invisible"}};

constexpr unsigned Anywhere = ~0U;

/// Nodes that have an access mode and a byte order of their own.
constexpr unsigned Own = T::Register | T::Formula | T::Masked | T::Port;

constexpr const char* NoLimit = "there is no such limit";

/// All that the versions of GenApi have had so far.
constexpr std::array<ElementKind, 81> ElementTable = {{
    {"AccessMode", Content::Text, E::Once, Own, &AccessModes},
    {"CacheChunkData", Content::Text, E::Once, Anywhere, &Answers},
    {"Cachable", Content::Text, E::Once, Own, &CacheModes},
    {"ChunkID", Content::Text, E::Shapes},
    {"Description", Content::Text},
    {"DisplayName", Content::Text},
    {"DisplayNotation", Content::Text},
    {"DocuURL", Content::Text},
    {"Endianess", Content::Text, E::Shapes, Own, &ByteOrders},
    {"EventID", Content::Text, E::Shapes},
    {"Extension", Content::Text, E::Repeats},
    {"FeatureID", Content::Text},
    {"ImposedAccessMode", Content::Text, E::Once, Anywhere, &AccessModes},
    {"ImposedVisibility", Content::Text, E::Once, Anywhere, &Visibilities},
    {"Input", Content::Text, E::Repeats},
    {"IsDeprecated", Content::Text, E::Once, Anywhere, &Answers},
    {"IsLinear", Content::Text, E::Once, Anywhere, &Answers},
    {"IsSelfClearing", Content::Text, E::Once, Anywhere, &Answers},
    {"Key", Content::Text},
    {"Representation", Content::Text, E::Once, Anywhere, &Representations},
    {"Sign", Content::Text, E::Shapes, Own, &Signs},
    {"Slope", Content::Text, E::Once, Anywhere, &Slopes},
    {"Streamable", Content::Text, E::Once, Anywhere, &Answers},
    {"SwapEndianess", Content::Text, E::Shapes, Anywhere, &Answers},
    {"Symbolic", Content::Text},
    {"ToolTip", Content::Text},
    {"Unit", Content::Text},
    {"ValidValueSet", Content::Text},
    {"Visibility", Content::Text, E::Once, Anywhere, &Visibilities},
    {"Constant", Content::Formula, E::Repeats, T::Formula},
    {"Expression", Content::Formula, E::Repeats, T::Formula},
    {"Formula", Content::Formula, E::Once, T::Knife},
    {"FormulaFrom", Content::Formula, E::Once, T::Converter},
    {"FormulaTo", Content::Formula, E::Once, T::Converter},
    {"Address", Content::WholeNumber, E::Repeats | E::Shapes, T::Register},
    {"Bit", Content::WholeNumber, E::Shapes, T::Masked},
    {"CommandValue", Content::WholeNumber, E::Shapes, T::Command},
    {"DisplayPrecision", Content::WholeNumber},
    {"LSB", Content::WholeNumber, E::Shapes, T::Masked},
    {"Length", Content::WholeNumber, E::Shapes, T::Register},
    {"MSB", Content::WholeNumber, E::Shapes, T::Masked},
    {"OffValue", Content::WholeNumber, E::Shapes, T::Boolean},
    {"OnValue", Content::WholeNumber, E::Shapes, T::Boolean},
    {"PollingTime", Content::WholeNumber},
    {"Timeout", Content::WholeNumber},
    {"NumericValue", Content::RealNumber, E::Repeats},
    {"Inc", Content::NumberOfNode, E::Once, T::Limited},
    {"Max", Content::NumberOfNode, E::Once, T::Limited},
    {"Min", Content::NumberOfNode, E::Once, T::Limited},
    {"Value", Content::NumberOfNode},
    {"ValueDefault", Content::NumberOfNode, E::Shapes},
    {"ValueIndexed", Content::NumberOfNode, E::Repeats | E::Shapes},
    {"p1212Parser", Content::Node},
    {"pAlias", Content::Node},
    {"pCastAlias", Content::Node},
    {"pDependent", Content::Node, E::Repeats},
    {"pEnumEntry", Content::Node, E::Repeats, T::Enumeration},
    {"pError", Content::Node, E::Repeats},
    {"pFeature", Content::Node, E::Repeats, T::Category},
    {"pInvalidator", Content::Node, E::Repeats},
    {"pPort", Content::Node, E::Shapes, T::Register},
    {"pSelected", Content::Node, E::Repeats},
    {"pSelecting", Content::Node, E::Repeats},
    {"pTerminal", Content::Node, E::Repeats},
    {"pAddress", Content::NodeWithValue, E::Repeats | E::Decides | E::Shapes, T::Register, nullptr, "it counts as 0"},
    {"pBlockPolling", Content::NodeWithValue, E::Repeats},
    {"pChunkID", Content::NodeWithValue},
    {"pCommandValue", Content::NodeWithValue, E::Once, T::Command},
    {"pInc", Content::NodeWithValue, E::Once, T::Limited, nullptr, NoLimit},
    {"pIndex", Content::NodeWithValue, E::Repeats | E::Decides | E::Shapes},
    {"pIsAvailable", Content::NodeWithValue, E::Once, Anywhere, nullptr, "it is never available"},
    {"pIsImplemented", Content::NodeWithValue, E::Once, Anywhere, nullptr, "it is not implemented"},
    {"pIsLocked", Content::NodeWithValue, E::Once, Anywhere, nullptr, "it is never locked"},
    {"pLength", Content::NodeWithValue, E::Decides | E::Shapes, T::Register},
    {"pMax", Content::NodeWithValue, E::Once, T::Limited, nullptr, NoLimit},
    {"pMin", Content::NodeWithValue, E::Once, T::Limited, nullptr, NoLimit},
    {"pValue", Content::NodeWithValue, E::Decides},
    {"pValueCopy", Content::NodeWithValue, E::Repeats},
    {"pValueDefault", Content::NodeWithValue, E::Decides | E::Shapes},
    {"pValueIndexed", Content::NodeWithValue, E::Repeats | E::Decides | E::Shapes},
    {"pVariable", Content::NodeWithValue, E::Repeats | E::Decides, T::Formula, nullptr, "the formula has no value"},
}};

template <class Row, std::size_t Size>
const Row* Find(const std::array<Row, Size>& table, std::string_view tag)
{
    static const auto rows = [&table]
    {
        std::unordered_map<std::string_view, const Row*> all;
        for (const Row& row : table)
            all.emplace(row.tag, &row);
        return all;
    }();
    const auto found = rows.find(tag);
    return found == rows.end() ? nullptr : found->second;
}

template <class Table>
std::vector<std::string_view> TagsOf(const Table& table)
{
    std::vector<std::string_view> tags;
    tags.reserve(table.size());
    for (const auto& row : table)
        tags.push_back(row.tag);
    return tags;
}

} // namespace

const NodeKind* FindNodeKind(std::string_view tag)
{
    return Find(NodeTable, tag);
}

const ElementKind* FindElementKind(std::string_view tag)
{
    return Find(ElementTable, tag);
}

const std::vector<Need>& Needs()
{
    static const std::vector<Need> needs = {
        {T::Register, {"pPort"}, "pPort"},
        {T::Register, {"Address", "pAddress", "pIndex", "IntSwissKnife", "SwissKnife"}, "Address"},
        {T::Register, {"Length", "pLength"}, "Length"},
        {T::Masked, {"Bit", "LSB"}, "LSB"},
        {T::Masked, {"Bit", "MSB"}, "MSB"},
        {T::Holder, {"Value", "pValue", "pIndex"}, "value"},
        {T::Entry, {"Value"}, "value"},
        {T::Command, {"CommandValue", "pCommandValue"}, "CommandValue"},
        {T::Converter, {"pValue"}, "pValue"},
        {T::Converter, {"FormulaFrom"}, "FormulaFrom, so it cannot be read"},
        {T::Converter, {"FormulaTo"}, "FormulaTo, so it cannot be written"},
        {T::Knife, {"Formula"}, "formula"},
        {T::Enumeration, {"EnumEntry", "pEnumEntry"}, "entries"},
    };
    return needs;
}

bool CanContain(const NodeKind& outer, const NodeKind& inner)
{
    return inner.whole.empty() ? inner.Is(Trait::Knife) : inner.whole == outer.tag; // Addresses can be worked out.
}

const std::vector<std::string_view>& TagsOfNodes()
{
    static const std::vector<std::string_view> tags = TagsOf(NodeTable);
    return tags;
}

const std::vector<std::string_view>& TagsOfElements()
{
    static const std::vector<std::string_view> tags = TagsOf(ElementTable);
    return tags;
}

} // namespace OPX::KltAPI
