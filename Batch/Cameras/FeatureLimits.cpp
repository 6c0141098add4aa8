#include "Cameras/FeatureLimits.h"

#include "Base/Printable.h"

#include <algorithm>
#include <array>
#include <utility>

namespace
{

/// In the order in which they are listed.
const std::array<const char*, 4> Tags = {"Min", "Max", "Inc", "Unit"};

bool StandsBefore(const ValueRow& a, const ValueRow& b)
{
    const auto place = [](const ValueRow& row) { return std::find(Tags.begin(), Tags.end(), row.name); };
    return place(a) < place(b);
}

std::vector<ValueRow> LimitsOfNode(const DescriptionElement& node)
{
    std::vector<ValueRow> limits;
    for (const std::string tag : Tags)
        if (const DescriptionElement* literal = node.Child(tag))
            limits.push_back({tag, Printable(literal->text), {}});
        else if (node.Child('p' + tag) != nullptr)
            limits.push_back({tag, std::string(), {}});
    return limits;
}

} // namespace

FeatureLimits LimitsOf(const DescriptionElement& description)
{
    FeatureLimits all;
    for (const DescriptionElement& node : description.children)
    {
        std::vector<ValueRow> limits = LimitsOfNode(node);
        if (!limits.empty())
            all.emplace(node.name, std::move(limits));
    }
    return all;
}

void AddLimits(std::vector<ValueRow>& limits, const std::vector<ValueRow>& more, const std::string& camera)
{
    for (const ValueRow& limit : more)
    {
        auto place = std::find_if(limits.begin(), limits.end(),
            [&limit](const ValueRow& known) { return known.name == limit.name && known.value == limit.value; });
        if (place == limits.end())
            place = limits.insert(std::upper_bound(limits.begin(), limits.end(), limit, StandsBefore), limit);
        place->cameras.push_back(camera);
    }
}
