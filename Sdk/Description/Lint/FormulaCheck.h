#ifndef FORMULACHECK_H
#define FORMULACHECK_H

#include "Lint/NodeReport.h"

namespace OPX::KltAPI
{

/// Looks for mistakes in the formulas of a node, and in what they are made of. The SDK would notice them as late as
/// somebody asks for a value.
void CheckFormulas(const NodeInPlace& node, Mistakes& mistakes);

} // namespace OPX::KltAPI

#endif
