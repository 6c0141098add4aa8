#ifndef GVCPDESCRIPTION_H
#define GVCPDESCRIPTION_H

#include "Base/Failure.h"
#include "Safety/SafeDescription.h"
#include "Transport/GvcpChannel.h"

namespace OPX::KltAPI
{

/// Reads the camera's description and checks it. Two registers say where it is; only what is in the camera itself is
/// read, no files or servers that it refers to.
/// \return KltErrorTimeout if the camera does not answer; KltErrorOther, with the reason, if there is no description
/// that can be used
Failure FetchDescription(GvcpChannel& camera, SafeDescription& description);

} // namespace OPX::KltAPI

#endif
