#ifndef DESCRIPTIONNOTES_H
#define DESCRIPTIONNOTES_H

#include "Document/NodeNames.h"

#include <string>
#include <unordered_map>
#include <vector>

/// What a description says of a feature to people. All of it is in one line, and empty if there is none.
struct FeatureNotes
{
    std::string displayName;
    std::string toolTip; ///< Or what there is instead.
    std::string visibility;
    std::vector<std::string> selectors;                    ///< Features on whose value this one's depends.
    std::unordered_map<std::string, std::string> toolTips; ///< Of entries, by their names.
};

/// The notes of all features. Refers to the document and its names.
class DescriptionNotes
{
public:
    DescriptionNotes(const OPX::KltAPI::Element& root, const OPX::KltAPI::NodeNames& names);

    FeatureNotes Of(const std::string& feature) const;

private:
    void AddSelector(const std::string& feature, const std::string& selector);

    const OPX::KltAPI::NodeNames& m_names;
    std::unordered_map<std::string, std::vector<std::string>> m_selectors; ///< By what they select.
};

#endif
