#include "StartValues.h"

#include "GlibPtr.h"
#include "RegisterLength.h"
#include "Transport.h"

#include <fstream>
#include <string>

namespace OPX
{
namespace KltAPI
{
namespace
{

std::string Trimmed(const std::string& text)
{
    const std::size_t begin = text.find_first_not_of(" \t\r");
    const std::size_t end = text.find_last_not_of(" \t\r");
    return begin == std::string::npos ? std::string() : text.substr(begin, end - begin + 1);
}

/// \return what is wrong with the line, empty if it was applied
std::string Apply(ArvGc* description, const std::string& line)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos)
        return "there is no '='";
    const std::string name = Trimmed(line.substr(0, equals));
    ArvGcNode* node = arv_gc_get_node(description, name.c_str());
    if (!ARV_IS_GC_FEATURE_NODE(node))
        return "there is no feature '" + name + "'";
    if (CheckLength(ARV_GC_FEATURE_NODE(node)) != KltErrorSuccess)
        return "the length of '" + name + "' is absurd";
    CallError error;
    arv_gc_feature_node_set_value_from_string(
        ARV_GC_FEATURE_NODE(node), Trimmed(line.substr(equals + 1)).c_str(), error.Out());
    return error.Get() == nullptr ? std::string() : error.Get()->message;
}

} // namespace

void ApplyStartValues(ArvGc* description, const std::filesystem::path& descriptionFile)
{
    const std::filesystem::path path = std::filesystem::path(descriptionFile).replace_extension(".values");
    std::ifstream file(path);
    // Also what the camera itself could never change may be set here.
    const ArvAccessCheckPolicy policy = arv_gc_get_access_check_policy(description);
    arv_gc_set_access_check_policy(description, ARV_ACCESS_CHECK_POLICY_DISABLE);
    int number = 0;
    for (std::string line; std::getline(file, line);)
    {
        ++number;
        line = Trimmed(line);
        const std::string problem = line.empty() || line[0] == '#' ? std::string() : Apply(description, line);
        if (!problem.empty())
            Report(path.string() + ":" + std::to_string(number) + ": " + problem);
    }
    arv_gc_set_access_check_policy(description, policy);
}

} // namespace KltAPI
} // namespace OPX
