#ifndef NODEVALUES_H
#define NODEVALUES_H

/// \file
/// Values of nodes, whatever their access: KltErrorInvalidValue is for what is out of range, off the increment or of
/// the wrong length.

#include "Formula/Formula.h"
#include "KoltaCPP/KoltaTypes.h"
#include "Safety/ValueCopies.h"

#include <arv.h>

#include <string>

namespace OPX::KltAPI
{

/// Whether the node's value can be fetched: that no register on the way to it is unreasonably long. The length can come
/// from another register and be anything. Aravis fetches a register as a whole, and the process ends if there is not
/// enough memory. For a register without a byte it returns uninitialised memory.
/// \return KltErrorInvalidValue for such a register, KltErrorResources for one that is too long
KltErrorType CheckLength(ArvGcFeatureNode* node);

/// The length of a register. \return KltErrorResources if it is unreasonable
KltErrorType LengthOf(ArvGcRegister* node, guint64& length);

/// \param offIncrement set if the value is within the limits, but not a whole number of increments above the minimum
KltErrorType CheckRange(ArvGcInteger* node, KltInt64_t value, bool* offIncrement = nullptr);
KltErrorType CheckRange(ArvGcFloat* node, double value, bool* offIncrement = nullptr);

KltErrorType ReadText(ArvGcString* node, std::string& value);
KltErrorType ReadBytes(ArvGcRegister* node, UcharVector& value);

KltErrorType WriteInteger(ArvGcInteger* node, KltInt64_t value);
KltErrorType WriteFloat(ArvGcFloat* node, double value);
KltErrorType WriteText(ArvGcString* node, const char* value);
KltErrorType WriteBytes(ArvGcRegister* node, const UcharVector& value);

/// Writes \a value, which was written to \a node, to the copies of the node and of those behind it.
KltErrorType WriteCopies(ArvGcFeatureNode* node, const Number& value, const ValueCopies& copies);

} // namespace OPX::KltAPI

#endif
