#ifndef NODEVALUES_H
#define NODEVALUES_H

/// \file
/// Values of nodes, whoever may use them, with the SDK's codes: -11 for what is out of range, off the increment or of
/// the wrong length.

#include "Description/Formula.h"
#include "Description/ValueCopies.h"
#include "KoltaCPP/KoltaTypes.h"

#include <arv.h>

#include <string>

namespace OPX
{
namespace KltAPI
{

/// Whether the node's value can be fetched: that no register on the way to it has an absurd length, which can stand in
/// another register and be anything. Aravis fetches a register as a whole, and the process ends if the memory does not
/// suffice. Of a register without a byte it delivers memory that nobody has written.
/// \return -11 for such a register, -14 for an absurd one
KltErrorType CheckLength(ArvGcFeatureNode* node);

/// The length of a register. \return -14 for an absurd one
KltErrorType LengthOf(ArvGcRegister* node, guint64& length);

/// \param offIncrement is set if the value is within the limits and no increment of the minimum
KltErrorType CheckRange(ArvGcInteger* node, KltInt64_t value, bool* offIncrement = nullptr);
KltErrorType CheckRange(ArvGcFloat* node, double value, bool* offIncrement = nullptr);

KltErrorType ReadText(ArvGcString* node, std::string& value);
KltErrorType ReadBytes(ArvGcRegister* node, UcharVector& value);

KltErrorType WriteInteger(ArvGcInteger* node, KltInt64_t value);
KltErrorType WriteFloat(ArvGcFloat* node, double value);
KltErrorType WriteText(ArvGcString* node, const char* value);
KltErrorType WriteBytes(ArvGcRegister* node, const UcharVector& value);

/// Writes \a value, which \a node was given, to the copies of the node and of those behind it.
KltErrorType WriteCopies(ArvGcFeatureNode* node, const Number& value, const ValueCopies& copies);

} // namespace KltAPI
} // namespace OPX

#endif
