#include "Transport/StartValues.h"

#include "Base/Failure.h"
#include "Base/Report.h"
#include "Document/Texts.h"
#include "Nodes/NodeRange.h"
#include "Nodes/NodeValues.h"

#include <fstream>
#include <sstream>
#include <string>

namespace OPX::KltAPI
{
namespace
{

Failure Wrong(const std::string& text)
{
    return {KltErrorInvalidValue, {text}};
}

/// The value of a raw feature: all of its bytes, in hexadecimal digits.
Failure ApplyBytes(ArvGcRegister* node, const std::string& value)
{
    UcharVector bytes;
    std::istringstream stream(value);
    for (std::string byte; stream >> byte;)
    {
        char* end = nullptr;
        bytes.push_back(static_cast<unsigned char>(g_ascii_strtoull(byte.c_str(), &end, 16)));
        if (byte.size() > 2 || *end != '\0')
            return Wrong("'" + byte + "' is not a byte");
    }
    guint64 length = 0;
    if (ReadLength(node, length) || WriteBytes(node, bytes))
        return Wrong(std::to_string(bytes.size()) + " bytes given, " + std::to_string(length) + " expected");
    return KltErrorSuccess;
}

Failure ApplyNumber(ArvGcNode* node, bool isReal, const std::string& value)
{
    char* end = nullptr;
    Number number = isReal ? Number(g_ascii_strtod(value.c_str(), &end))
                           : Number(static_cast<std::int64_t>(g_ascii_strtoll(value.c_str(), &end, 0)));
    if (value.empty() || *end != '\0')
        return Wrong("'" + value + "' is not a number");
    if (Failure failure = FitIntoRange(node, number))
        return Wrong("'" + value + "' " + (failure.reason ? failure.reason.text : "cannot be set"));
    CallError error;
    WriteNumber(node, number, error.Out());
    return error.Get() == nullptr ? Failure() : Wrong(error.Get()->message);
}

Failure Apply(ArvGc* nodeMap, const std::string& line)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos)
        return Wrong("there is no '='");
    const std::string name = Trimmed(line.substr(0, equals));
    ArvGcNode* node = arv_gc_get_node(nodeMap, name.c_str());
    if (!ARV_IS_GC_FEATURE_NODE(node))
        return Wrong("there is no feature '" + name + "'");
    const std::string value = Trimmed(line.substr(equals + 1));
    const KltFeatureDataType type = DataTypeOf(node);
    if (type == KltFeatureDataRaw)
        return ApplyBytes(ARV_GC_REGISTER(node), value);
    if (type == KltFeatureDataString)
        return WriteText(ARV_GC_STRING(node), value.c_str()) ? Wrong("'" + name + "' cannot hold '" + value + "'")
                                                             : Failure();
    if (type == KltFeatureDataInt || type == KltFeatureDataFloat)
        return ApplyNumber(node, type == KltFeatureDataFloat, value);
    CallError error;
    arv_gc_feature_node_set_value_from_string(ARV_GC_FEATURE_NODE(node), value.c_str(), error.Out());
    return error.Get() == nullptr ? Failure() : Wrong(error.Get()->message);
}

} // namespace

void ApplyStartValues(ArvGc* nodeMap, const std::filesystem::path& descriptionFile)
{
    const std::filesystem::path path = std::filesystem::path(descriptionFile).replace_extension(".values");
    std::error_code none;
    if (!std::filesystem::is_regular_file(path, none))
        return;
    std::ifstream file(path);
    // Even what can never be written in the camera itself may be set here.
    const ArvAccessCheckPolicy policy = arv_gc_get_access_check_policy(nodeMap);
    arv_gc_set_access_check_policy(nodeMap, ARV_ACCESS_CHECK_POLICY_DISABLE);
    int number = 0;
    for (std::string line; std::getline(file, line);)
    {
        ++number;
        line = Trimmed(line);
        const Failure failure = line.empty() || line[0] == '#' ? Failure() : Apply(nodeMap, line);
        if (failure)
            Report(path.string() + ":" + std::to_string(number) + ": " + failure.reason.text);
    }
    arv_gc_set_access_check_policy(nodeMap, policy);
}

} // namespace OPX::KltAPI
