#ifndef MEMORYDEVICE_H
#define MEMORYDEVICE_H

#include "Base/GlibPtr.h"

#include <arv.h>

namespace OPX
{
namespace KltAPI
{

/// A device that is nothing but memory: what is written to an address is read from it. Memory that was never written
/// holds 0xFF, so that features behind a bit that says "implemented" are there.
///
/// Aravis' own fake device has 64 KiB of registers; descriptions of real cameras reach far beyond.
ObjectPtr<ArvDevice> NewMemoryDevice();

/// Whether memory was read since the last call that was never written.
bool TakeUnknownOf(ArvDevice* memoryDevice);

} // namespace KltAPI
} // namespace OPX

#endif
