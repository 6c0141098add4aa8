#ifndef FEATURETABLE_H
#define FEATURETABLE_H

#include "Cameras/CameraFamily.h"
#include "Cameras/NodeStructure.h"

#include <string>
#include <vector>

/// What cameras tell in words, as far as they agree. Those that tell nothing do not disagree.
class CommonText
{
public:
    void Add(const std::string& text)
    {
        m_differs = m_differs || (!text.empty() && !m_text.empty() && text != m_text);
        m_text = m_text.empty() ? text : m_text;
    }

    /// Empty if nothing is told, or not the same.
    std::string Text() const { return m_differs ? std::string() : m_text; }

private:
    std::string m_text;
    bool m_differs = false;
};

/// A name with a value: an entry of an enumeration.
struct ValueRow
{
    std::string name;
    std::string value;
    std::vector<std::string> cameras; ///< Which cameras have it.
    CommonText toolTip = {};
};

/// A limit, or the "Length" of a text or of bytes.
struct LimitRow : OPX::KltAPI::Limit
{
    std::string present; ///< What the camera says instead at the moment; empty if that is the same, or nobody asked.
    std::vector<std::string> cameras;

    /// "Max = 10", "Max = 8 now", "Max varies"
    std::string Text() const;
};

/// What a feature is at the moment.
struct PresentRow
{
    std::string value;
    std::string error; ///< Why there is no value.
    std::vector<std::string> cameras;

    std::string Text() const { return error.empty() ? "Value = " + value : "no Value: " + error; }
};

/// What a user sees of a feature.
struct FeatureRow
{
    std::string category;
    std::string name;
    std::string type; ///< "Int", "Float", ... Of several cameras the first one's.
    bool readable;
    bool writable;
    std::vector<ValueRow> entries = {};
    std::vector<LimitRow> limits = {};     ///< Min, Max, Inc, Unit and Length.
    std::vector<std::string> cameras = {}; ///< Which cameras have it.
    std::vector<ValueRow> types = {};      ///< The types that it has in them, as names without a value.
    std::vector<PresentRow> values = {};   ///< Of cameras that were asked.
    CommonText displayName = {};
    CommonText toolTip = {};
    CommonText visibility = {};
    std::vector<ValueRow> selectors = {}; ///< The features that select it, as names without a value.

    /// The type, or the types if cameras do not agree.
    std::string TypeText() const;

    /// "RO", "WO", "RW" or "--".
    std::string AccessText() const;

    /// Entries, limits and values as one text: "Off = 0, On = 1". The cameras stand behind what not all of them have.
    std::string ValuesText() const;

    /// What it is, in words: "Vendor Name: Who makes the camera (Expert, selected by Port)".
    std::string NotesText() const;
};

/// Texts as one, with commas between them.
std::string Joined(const std::vector<std::string>& texts);

/// A feature of one camera, whose limits these are.
FeatureRow RowOf(const FeatureInfo& info, const OPX::KltAPI::Limits& limits);

/// A limit that a formula makes of constants is a constant.
void Resolve(std::vector<LimitRow>& limits, NodeStructure& structure);

/// What at least one of the cameras has, in the order of the catalogue, and which of them have it.
/// \param family the cameras as one
std::vector<FeatureRow> TableOf(const std::vector<CameraFeatures>& cameras, CameraFamily family);

#endif
