#ifndef ERRORCODES_H
#define ERRORCODES_H

#include "KoltaCPP/KoltaTypes.h"

#include <glib.h>

namespace OPX::KltAPI
{

/// The domain of errors that are our own: their codes are the SDK's.
GQuark OwnErrorDomain();

/// The SDK's code for an error of GLib or Aravis; success for none.
KltErrorType CodeOf(const GError* error);

} // namespace OPX::KltAPI

#endif
