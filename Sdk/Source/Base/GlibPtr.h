#ifndef GLIBPTR_H
#define GLIBPTR_H

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

} // namespace OPX::KltAPI

#endif
