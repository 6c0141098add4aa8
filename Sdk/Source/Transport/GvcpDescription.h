#ifndef GVCPDESCRIPTION_H
#define GVCPDESCRIPTION_H

#include "KoltaCPP/KoltaTypes.h"
#include "Safety/SafeDescription.h"
#include "Transport/GvcpChannel.h"

namespace OPX::KltAPI
{

/// Reads the camera's description and checks it. Two registers say where it is; only what is in the camera itself is
/// read, no files or servers that it refers to.
/// \return KltErrorTimeout the camera does not answer, KltErrorOther there is no description that can be used: the
/// problem says why
KltErrorType FetchDescription(GvcpChannel& camera, SafeDescription& description);

} // namespace OPX::KltAPI

#endif
