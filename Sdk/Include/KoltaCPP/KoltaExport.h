#ifndef KOLTACPP_KOLTAEXPORT_H
#define KOLTACPP_KOLTAEXPORT_H

/// \file
/// What the library exports. Everything else in it is hidden, so that it can change without affecting any program.

/// Marks a class that programs can use.
#define KOLTACPP_EXPORT __attribute__((visibility("default")))

#endif
