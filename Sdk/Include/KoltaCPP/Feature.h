#ifndef KOLTACPP_FEATURE_H
#define KOLTACPP_FEATURE_H

#include "KoltaCPP/EnumEntry.h"
#include "KoltaCPP/KoltaExport.h"
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
/// at any time, even after the camera was closed. Values can be read and written while the camera is open; on a closed
/// or lost camera these calls give `KltErrorDeviceNotOpen`. Calls on features of one camera may come from any thread.
///
/// Texts are asked for twice: with a null buffer the call stores the length in bytes, without a terminating zero; with
/// a buffer it expects the buffer's size in \a length, fills in the text and stores its length. A terminating zero is
/// added if there is room for it. A buffer that is too small gives `KltErrorMoreData` and the length that is needed.
class KOLTACPP_EXPORT Feature
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

    /// The path of the category that the feature is in, for example "/AcquisitionControl"; UTF-8.
    KltErrorType GetCategory(char* category, unsigned int& length) const;

    /// The data type, one of `KltFeatureDataTypeValues`.
    KltErrorType GetDataType(KltFeatureDataType& dataType) const;

    /// Whether the feature can be read and written at all; temporary locks do not count.
    KltErrorType GetFlags(KltFeatureFlagsType& flags) const;

    /// The entries of an enumeration, in the order of the camera's description: those that the camera has, whether they
    /// are available now or not. Of an integer that takes a few values only, which its description lists, these values;
    /// the name of each is the number.
    /// \param entries room for \a count entries. With a null pointer, as from `data()` of an empty vector, the call
    ///     only stores how many there are.
    /// \param count the length of \a entries; afterwards the number of entries
    /// \return `KltErrorWrongType` for all other features, `KltErrorMoreData` when \a count is too small
    KltErrorType GetEntries(EnumEntry* entries, unsigned int& count);

    /// \name Values
    /// Every call asks the camera and returns when it has answered, with the time limit that `Camera` describes.
    /// Numbers are in the unit that the description gives; nothing is converted. After an error \a value is unchanged.
    ///  - `KltErrorDeviceNotOpen`: the camera is not open, or has been lost since; see `Camera`
    ///  - `KltErrorWrongType`: the feature is of another type
    ///  - `KltErrorInvalidAccess`: it cannot be read or written, or not now; the entry is not available now; or the
    ///    value comes with images or events and not from a register
    ///  - `KltErrorInvalidValue`: the value is out of bounds, not a whole number of increments above the minimum, of
    ///    the wrong length, not an entry of the enumeration, or not in the integer's list of values
    ///  - `KltErrorNotFound`: the camera was opened again and its description no longer has the feature, or a formula
    ///    of the description needs something that is not in it
    ///  - `KltErrorTimeout`: the camera does not answer, or other threads kept it busy
    ///  - `KltErrorOther`: a formula of the description has no value
    ///  - `KltErrorResources`: a length (of more than 16 MiB) or the result of a formula is unreasonably large, or
    ///    there is not enough memory
    ///  - from cameras in a network and on USB also what `KltErrorCode` names for a connection that fails
    /// @{

    /// Gets an integer or, as the entry's value, an enumeration.
    KltErrorType GetValue(KltInt64_t& value) const;

    /// Gets a float.
    KltErrorType GetValue(double& value) const;

    /// Gets a string: the camera's bytes up to the first zero, usually ASCII or UTF-8.
    KltErrorType GetValue(std::string& value) const;

    /// Gets a boolean.
    KltErrorType GetValue(bool& value) const;

    /// Gets a raw feature. \a value gets the register's length.
    KltErrorType GetValue(UcharVector& value) const;

    /// Sets an integer or, by the entry's value, an enumeration.
    KltErrorType SetValue(KltInt64_t value);

    /// Sets a float. NaN is out of bounds. The camera gets the nearest value that it can hold: where the feature stands
    /// on an integer, the value is rounded, and only then compared with the limits. What a formula makes of it is also
    /// rounded to the increment of what is behind the formula.
    KltErrorType SetValue(double value);

    /// Sets a string. The bytes go to the camera as they are; a null pointer gives `KltErrorBadParameter`.
    KltErrorType SetValue(const char* value);

    /// Sets a boolean.
    KltErrorType SetValue(bool value);

    /// Sets a raw feature. \a value must have exactly the register's length, as `GetValue` delivers it.
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

    /// Runs a command. Returns when the camera has accepted it, not when it is done.
    KltErrorType RunCommand();
    /// @}

private:
    Impl* m_impl;
};

/// Handle to a feature.
typedef shared_ptr<Feature> FeaturePtr;
/// Several of them.
typedef std::vector<FeaturePtr> FeaturePtrVector;
/// Several entries.
typedef std::vector<EnumEntry> EnumEntryVector;

} // namespace KltAPI
} // namespace OPX

#endif
