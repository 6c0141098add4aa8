#ifndef KOLTACPP_SHAREDPTR_H
#define KOLTACPP_SHAREDPTR_H

#include "KoltaCPP/Mutex.h"

#include <cstddef>

namespace OPX
{
namespace KltAPI
{

/// Counter of the shared pointers to one object.
class ref_count_base
{
public:
    virtual ~ref_count_base() = default;

    /// One more shared pointer.
    virtual void inc() = 0;

    /// One shared pointer fewer; the last one destroys the object and this counter.
    virtual void dec() = 0;

    /// The number of shared pointers. A snapshot: takes no lock.
    virtual long long use_count() const = 0;
};

/// The counter of an object that was created as a `T`, and is destroyed as one.
template <class T>
class ref_count : public ref_count_base
{
public:
    /// Takes over \a object; the count starts at 1.
    explicit ref_count(T* object) : m_object(object), m_lock(false) {}

    void inc() override
    {
        m_lock.Lock();
        ++m_count;
        m_lock.Unlock();
    }

    void dec() override
    {
        m_lock.Lock();
        if (m_count > 1)
        {
            --m_count;
            m_lock.Unlock();
            return;
        }
        // The object dies while the lock is held. No scoped lock: it would unlock after the counter is freed.
        delete m_object;
        m_lock.Unlock();
        delete this;
    }

    long long use_count() const override { return m_count; }

private:
    T* m_object;
    long long m_count = 1;
    Mutex m_lock;
};

/// The SDK's reference-counted handle. Copying shares ownership; the last release destroys the object.
/// Different handles of one object may be used by different threads; one handle is for one thread at a time.
template <class T>
class shared_ptr
{
public:
    /// An empty handle.
    shared_ptr() = default;

    /// Takes over \a object, which may be of a derived class; it is destroyed as what it is here.
    template <class U>
    explicit shared_ptr(U* object) : m_count(Counter(object)),
                                     m_object(object)
    {
    }

    /// Shares the object of \a other.
    shared_ptr(const shared_ptr& other) : m_count(other.m_count), m_object(other.m_object) { Share(); }

    /// Takes the object of \a other, which is empty afterwards.
    shared_ptr(shared_ptr&& other) noexcept { swap(other); }

    /// Shares the object of \a other as a `T`.
    template <class U>
    shared_ptr(const shared_ptr<U>& other) : m_count(other.m_count),
                                             m_object(other.m_object)
    {
        Share();
    }

    ~shared_ptr()
    {
        if (m_count != nullptr)
            m_count->dec();
    }

    /// Releases the object and shares that of \a other.
    shared_ptr& operator=(shared_ptr other) noexcept
    {
        swap(other);
        return *this;
    }

    /// Releases the object and leaves the handle empty.
    void reset() { shared_ptr().swap(*this); }

    /// Releases the object and takes over another one.
    template <class U>
    void reset(U* object)
    {
        shared_ptr(object).swap(*this);
    }

    /// Exchanges the objects of both handles.
    void swap(shared_ptr& other) noexcept
    {
        ref_count_base* count = m_count;
        m_count = other.m_count;
        other.m_count = count;
        T* object = m_object;
        m_object = other.m_object;
        other.m_object = object;
    }

    /// The object, or NULL for an empty handle.
    T* get() const { return m_object; }

    /// The object of a handle that is not empty.
    T* operator->() const { return m_object; }

    /// The object of a handle that is not empty.
    T& operator*() const { return *m_object; }

    /// Whether the handle is not empty.
    explicit operator bool() const { return m_object != nullptr; }

    /// The number of handles of the object, 0 for an empty handle.
    long long use_count() const { return m_count == nullptr ? 0 : m_count->use_count(); }

private:
    template <class U>
    friend class shared_ptr;

    template <class U>
    static ref_count_base* Counter(U* object)
    {
        try
        {
            return new ref_count<U>(object);
        }
        catch (...)
        {
            delete object;
            throw;
        }
    }

    void Share()
    {
        if (m_count != nullptr)
            m_count->inc();
    }

    ref_count_base* m_count = nullptr;
    T* m_object = nullptr;
};

} // namespace KltAPI
} // namespace OPX

#endif
