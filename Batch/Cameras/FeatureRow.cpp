#include "Cameras/FeatureRow.h"

#include "KoltaHelper.h"

namespace
{

/// The cameras stand behind what not all of them have.
template <class Row>
void AddTexts(std::vector<std::string>& texts, const std::vector<Row>& rows, const std::vector<std::string>& cameras)
{
    for (const Row& row : rows)
        texts.push_back(row.name + (row.value.empty() ? "" : " = " + row.value) +
                        (row.cameras == cameras ? "" : " (" + Joined(row.cameras) + ")"));
}

} // namespace

std::string FeatureRow::TypeText() const
{
    std::vector<std::string> texts;
    AddTexts(texts, types, cameras);
    return texts.empty() ? type : Joined(texts);
}

std::string FeatureRow::AccessText() const
{
    return readable ? (writable ? "RW" : "RO") : (writable ? "WO" : "--");
}

std::string FeatureRow::ValuesText() const
{
    std::vector<std::string> texts;
    AddTexts(texts, entries, cameras);
    AddTexts(texts, limits, cameras);
    return Joined(texts);
}

std::string TypeName(KltFeatureDataType dataType)
{
    static const QString Prefix = QStringLiteral("KltFeatureData");
    const QString name = KoltaHelper::DataTypeToString(dataType);
    return (name.startsWith(Prefix) ? name.mid(Prefix.size()) : name).toStdString();
}

std::string Joined(const std::vector<std::string>& texts)
{
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}
