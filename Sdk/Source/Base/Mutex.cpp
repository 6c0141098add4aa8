#include "KoltaCPP/Mutex.h"

#include <mutex>

namespace OPX::KltAPI
{

struct Mutex::Impl
{
    std::mutex mutex;
};

Mutex::Mutex(bool initLock) : m_impl(new Impl)
{
    if (initLock)
        Lock();
}

Mutex::~Mutex()
{
    delete m_impl;
}

void Mutex::Lock()
{
    m_impl->mutex.lock();
}

void Mutex::Unlock()
{
    m_impl->mutex.unlock();
}

} // namespace OPX::KltAPI
