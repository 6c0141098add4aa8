#ifndef REGISTERLENGTH_H
#define REGISTERLENGTH_H

#include "KoltaCPP/KoltaTypes.h"

#include <arv.h>

namespace OPX
{
namespace KltAPI
{

/// Asks for the length of a register, which can stand in another register and be anything. Aravis fetches a register
/// as a whole, and the process ends if the memory does not suffice. \return -14 for an absurd length
KltErrorType LengthOf(ArvGcRegister* node, guint64& length);

/// Whether the feature's value can be fetched: that it is in no register, or in one of a sound length. Of a register
/// without a byte Aravis delivers memory that nobody has written. \return -11 for such a register, -14 for an absurd
/// one
KltErrorType CheckLength(ArvGcFeatureNode* node);

} // namespace KltAPI
} // namespace OPX

#endif
