#include "KoltaCPP/Mutex.h"

#include <mutex>

namespace OPX::KltAPI
{

struct Mutex::Impl : std::mutex
{
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
    m_impl->lock();
}

void Mutex::Unlock()
{
    m_impl->unlock();
}

} // namespace OPX::KltAPI
