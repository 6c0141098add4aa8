#ifndef NODERANGE_H
#define NODERANGE_H

#include "Base/Failure.h"
#include "Formula/Formula.h"

#include <arv.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace OPX::KltAPI
{

const long double NoLimit = std::numeric_limits<double>::max();

/// What a number may be set to at the moment, as far as its node and those that its value comes through say. In a type
/// that holds integers of 64 bits, too.
struct Range
{
    long double minimum = -NoLimit;
    long double maximum = NoLimit;
    long double increment = 0; ///< 0 if no node declares one;
    long double base = 0;      ///< what it is counted from.
    bool whole = false;        ///< A fraction would be lost on the way.
};

/// Asks the camera for what the limits depend on. Throws a `CallError`.
/// \param node an integer, a float or an enumeration
Range RangeOf(ArvGcNode* node);

/// The range from the first number on its increments to the last, as those who ask for it expect it.
Range OnSteps(Range range);

/// The only values that a node takes; none if all within its range will do.
const std::vector<std::int64_t>& ValidValuesOf(ArvGcNode* node);

/// Whether the node may be set to \a value, which becomes the number that the node can hold. If it may not, the failure
/// has a reason.
/// \param converted whether a formula has made the value: it can be off an increment then without anybody's fault
Failure FitIntoRange(ArvGcNode* node, Number& value, bool converted = false);

} // namespace OPX::KltAPI

#endif
