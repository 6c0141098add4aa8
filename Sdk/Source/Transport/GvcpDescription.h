#ifndef GVCPDESCRIPTION_H
#define GVCPDESCRIPTION_H

#include "Description/CheckedDescription.h"
#include "KoltaCPP/KoltaTypes.h"
#include "Transport/GvcpChannel.h"

namespace OPX
{
namespace KltAPI
{

/// Reads the camera's description and checks it. Cameras tell in two registers where it is; only what is in the camera
/// itself is read, no files and no servers that it names.
/// \return -12 the camera does not answer, -13 there is no description that can be used: the problem says why
KltErrorType FetchDescription(GvcpChannel& camera, CheckedDescription& description);

} // namespace KltAPI
} // namespace OPX

#endif
