#ifndef KOLTACPP_FEATURE_H
#define KOLTACPP_FEATURE_H

#include "KoltaCPP/EnumEntry.h"
#include "KoltaCPP/KoltaTypes.h"
#include "KoltaCPP/SharedPtr.h"

#include <string>
#include <type_traits>
#include <vector>

namespace OPX
{
namespace KltAPI
{

/// One feature of a camera.
///
/// Name, category, data type, flags and entries are fixed when the camera's features are listed and can be asked for
/// at any time, also after the camera was closed. Values can be read and written while the camera is open; on a closed
/// one these calls give -5 (device not open). Calls on features of one camera may come from any thread.
///
/// Texts are asked for twice: with a null buffer the call stores the length in bytes, without a terminating zero; with
/// a buffer it expects the buffer's size in \a length, fills in the text and stores its length. A terminating zero is
/// added where there is room for it. A buffer that is too small gives -9 and the needed length.
class Feature
{
public:
    struct Impl;

    /// For the library: takes over \a impl.
    explicit Feature(Impl* impl);
    ~Feature();

    Feature(const Feature&) = delete;
    Feature& operator=(const Feature&) = delete;

    /// The name, unique within a camera; UTF-8.
    KltErrorType GetName(char* name, unsigned int& length) const;

    /// The path of categories that the feature stands in, for example "/AcquisitionControl"; UTF-8.
    KltErrorType GetCategory(char* category, unsigned int& length) const;

    /// The data type, one of `KltFeatureDataTypeValues`.
    KltErrorType GetDataType(KltFeatureDataType& dataType) const;

    /// Whether the feature can be read and written at all; momentary locks do not count.
    KltErrorType GetFlags(KltFeatureFlagsType& flags) const;

    /// The entries of an enumeration, in the order of the camera's description. With a null array the call stores
    /// their number, with an array it expects the array's length in \a count. Other features give -10.
    KltErrorType GetEntries(EnumEntry* entries, unsigned int& count);

    /// \name Values
    /// Errors: -5 the camera is not open, -6 the feature cannot be read or written (now), or the entry is not available
    /// (now), or the value comes with images or events and not from the camera, -7 a null pointer, -10 the feature is
    /// of another type, -11 the value is out of bounds, not an increment of the minimum or no entry of the enumeration,
    /// -12 the camera does not answer or is gone, -13 a formula of the description has no value, -14 a length or the
    /// result of a formula is absurd. After an error \a value is unchanged.
    /// @{

    /// Value of an integer or, as the entry's value, of an enumeration.
    KltErrorType GetValue(KltInt64_t& value) const;
    KltErrorType GetValue(double& value) const;
    KltErrorType GetValue(std::string& value) const;
    KltErrorType GetValue(bool& value) const;
    KltErrorType GetValue(UcharVector& value) const;

    KltErrorType SetValue(KltInt64_t value);
    KltErrorType SetValue(double value);
    KltErrorType SetValue(const char* value);
    KltErrorType SetValue(bool value);
    KltErrorType SetValue(const UcharVector& value);

    /// Enumerators and integers of every other width. Without it a literal or an enumerator would fit the 64-bit
    /// integer, `double` and `bool` equally well.
    template <class T>
    typename std::enable_if<(std::is_enum<T>::value || std::is_integral<T>::value), KltErrorType>::type SetValue(
        T value)
    {
        return SetValue(static_cast<KltInt64_t>(value));
    }

    /// Pointers to anything but text would turn into `bool`.
    template <class T>
    KltErrorType SetValue(const T* value) = delete;

    /// Runs a command; returns when the camera has accepted it.
    KltErrorType RunCommand();
    /// @}

private:
    Impl* m_impl;
};

/// Handle of a feature.
typedef shared_ptr<Feature> FeaturePtr;
typedef std::vector<FeaturePtr> FeaturePtrVector;
typedef std::vector<EnumEntry> EnumEntryVector;

} // namespace KltAPI
} // namespace OPX

#endif
