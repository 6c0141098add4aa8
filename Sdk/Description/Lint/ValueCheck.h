#ifndef VALUECHECK_H
#define VALUECHECK_H

#include "Lint/NodeReport.h"

namespace OPX::KltAPI
{

/// Looks for constants of a node that contradict each other: limits, values of enumerations, bits of registers.
void CheckValues(const NodeInPlace& node, Mistakes& mistakes);

} // namespace OPX::KltAPI

#endif
