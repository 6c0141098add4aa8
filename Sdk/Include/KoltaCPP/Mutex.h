#ifndef KOLTACPP_MUTEX_H
#define KOLTACPP_MUTEX_H

#include "KoltaCPP/KoltaExport.h"

namespace OPX
{
namespace KltAPI
{

/// A mutex that is not recursive. Any thread may lock it; the same thread must unlock it.
class KOLTACPP_EXPORT Mutex
{
public:
    /// \param initLock whether the calling thread holds the mutex from the start
    explicit Mutex(bool initLock);

    /// Nobody may hold the mutex.
    ~Mutex();

    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    /// Waits until the calling thread holds the mutex.
    void Lock();

    /// Gives up the mutex.
    void Unlock();

private:
    struct Impl;
    Impl* m_impl;
};

} // namespace KltAPI
} // namespace OPX

#endif
