#ifndef NODEVALUES_H
#define NODEVALUES_H

/// \file
/// Values of nodes, whatever their access and their range: KltErrorInvalidValue is for what has the wrong length.

#include "Base/Failure.h"
#include "Formula/Formula.h"
#include "KoltaCPP/KoltaTypes.h"

#include <arv.h>

#include <string>

namespace OPX::KltAPI
{

/// The type that a node has as a feature. The kinds of nodes overlap: an enumeration can also be read as an integer,
/// for example. The first that fits counts.
KltFeatureDataType DataTypeOf(ArvGcNode* node);

/// The SDK's code for a formula without a value.
KltErrorType CodeOf(const FormulaError& error);

/// The value of an integer, a float, an enumeration or a boolean.
Number ReadNumber(ArvGcNode* node, GError** error);

/// Sets the value of an integer, a float, an enumeration or a boolean; does nothing to other nodes.
void WriteNumber(ArvGcNode* node, const Number& value, GError** error);

/// The length can come from another register and be anything. \return KltErrorResources if it is unreasonable
Failure ReadLength(ArvGcRegister* node, guint64& length);

/// How many bytes a string or a register has room for; 0 if nothing says so.
Failure ReadCapacity(ArvGcFeatureNode* node, guint64& length);

Failure ReadText(ArvGcString* node, std::string& value);
Failure ReadBytes(ArvGcRegister* node, UcharVector& value);
Failure WriteText(ArvGcString* node, const char* value);
Failure WriteBytes(ArvGcRegister* node, const UcharVector& value);

/// Writes \a value, which was written to \a node, to the copies of the node and of those behind it. Links that lead
/// nowhere are ignored.
Failure WriteCopies(ArvGcFeatureNode* node, const Number& value);

} // namespace OPX::KltAPI

#endif
