#ifndef CHOSENTRANSPORTS_H
#define CHOSENTRANSPORTS_H

#include "Transport/Transport.h"

namespace OPX::KltAPI
{

/// The transports that the environment variable KOLTA_TRANSPORTS names; all if it is not set or empty. Words that do
/// not name a transport are reported.
Transports ChosenTransports();

} // namespace OPX::KltAPI

#endif
