#ifndef MEMORYDEVICE_H
#define MEMORYDEVICE_H

#include "Base/GlibPtr.h"

#include <arv.h>

namespace OPX::KltAPI
{

/// A device that is nothing but memory: what is written to an address is read from it. Memory that was never written
/// holds 0xFF, so that a bit that says "implemented" is set.
///
/// Aravis' own fake device has 64 KiB of registers; descriptions of real cameras reach far beyond.
ObjectPtr<ArvDevice> NewMemoryDevice();

/// Whether memory that was never written was read since the last call.
bool TakeUnknownOf(ArvDevice* memoryDevice);

} // namespace OPX::KltAPI

#endif
