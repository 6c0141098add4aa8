#ifndef FEATUREINFOS_H
#define FEATUREINFOS_H

#include <KoltaCPP/Camera.h>

#include <map>
#include <string>
#include <vector>

/// What the catalogue takes from the SDK for one feature.
struct FeatureInfo
{
    /// Reads all of it. What cannot be read stays empty.
    explicit FeatureInfo(const OPX::KltAPI::FeaturePtr& handle);

    OPX::KltAPI::FeaturePtr feature;
    std::string name;
    std::string category;
    KltFeatureDataType dataType = KltFeatureDataUnknown;
    std::vector<OPX::KltAPI::EnumEntry> entries; ///< Of an enumeration, in the SDK's order.
};

/// The catalogue of one camera's features, in the order in which classes are generated from it.
///
/// Shares the ownership of the features, but not of the camera: it is filled while the camera is open and stays usable
/// after the camera was closed. GUI thread only.
class FeatureInfos
{
public:
    /// Category paths as the SDK delivers them, in byte order; a path without features is not there.
    typedef std::map<std::string, std::vector<OPX::KltAPI::FeaturePtr>> CategoryMap;

    /// Names of the enumeration features in byte order, with their entries sorted by value.
    typedef std::map<std::string, std::vector<OPX::KltAPI::EnumEntry>> EnumMap;

    virtual ~FeatureInfos() = default;

    /// Replaces the catalogue by the features of \a camera, which is open.
    /// \return 0, or the SDK's code when the features cannot be listed; the catalogue is empty then
    int Create(OPX::KltAPI::shared_ptr<OPX::KltAPI::Camera> camera);

    /// Appends the features of \a camera in the SDK's order.
    /// \return 0, or the SDK's code when they cannot be listed; nothing is appended then
    static int Read(OPX::KltAPI::Camera& camera, std::vector<FeatureInfo>& features);

    /// Replaces the catalogue by features that were read before, of one camera or of several.
    void Arrange(std::vector<FeatureInfo> features);

    const CategoryMap& Categories() const { return m_categories; }
    const EnumMap& Enums() const { return m_enums; }

    /// The number of features in all categories.
    int FeatureCount() const;

    /// Says that no feature comes before another one. Never reads \a b: see the implementation.
    static bool SortFeaturesByName(const OPX::KltAPI::FeaturePtr& a, const OPX::KltAPI::FeaturePtr& b);

    /// Whether the value of \a a is below the one of \a b.
    static bool SortEnumEntriesByValue(const OPX::KltAPI::EnumEntry& a, const OPX::KltAPI::EnumEntry& b);

private:
    CategoryMap m_categories;
    EnumMap m_enums;
};

#endif
