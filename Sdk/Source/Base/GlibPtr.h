#ifndef GLIBPTR_H
#define GLIBPTR_H

/// \file
/// Ownership of what GLib and Aravis hand out.

#include <glib-object.h>

#include <memory>

namespace OPX::KltAPI
{

struct ObjectUnref
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// One reference to a GObject.
template <class T>
using ObjectPtr = std::unique_ptr<T, ObjectUnref>;

/// The error of a call: pass Out() to the call.
class CallError
{
public:
    CallError() = default;
    ~CallError() { g_clear_error(&m_error); }
    CallError(const CallError&) = delete;
    CallError& operator=(const CallError&) = delete;

    GError** Out() { return &m_error; }
    const GError* Get() const { return m_error; }

private:
    GError* m_error = nullptr;
};

} // namespace OPX::KltAPI

#endif
