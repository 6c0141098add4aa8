#include "Cameras/FeatureRow.h"

std::string FeatureRow::AccessText() const
{
    return readable ? (writable ? "RW" : "RO") : (writable ? "WO" : "--");
}

std::string FeatureRow::ValuesText() const
{
    std::vector<std::string> texts;
    for (const std::vector<ValueRow>* values : {&entries, &limits})
        for (const ValueRow& value : *values)
            if (!value.value.empty())
                texts.push_back(value.name + " = " + value.value +
                                (value.cameras == cameras ? "" : " (" + Joined(value.cameras) + ")"));
    return Joined(texts);
}

std::string Joined(const std::vector<std::string>& texts)
{
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}
