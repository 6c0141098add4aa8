#ifndef KOLTACPP_KOLTAEXPORT_H
#define KOLTACPP_KOLTAEXPORT_H

/// \file
/// What the library exports. All else in it is hidden, so that it can change without any program noticing.

/// Marks a class that programs can use.
#define KOLTACPP_EXPORT __attribute__((visibility("default")))

#endif
