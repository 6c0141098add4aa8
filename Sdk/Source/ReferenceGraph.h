#ifndef REFERENCEGRAPH_H
#define REFERENCEGRAPH_H

#include <libxml/tree.h>

#include <string>

namespace OPX
{
namespace KltAPI
{

/// Looks for what makes the evaluation of a description endless: nodes that need their own value to know it, chains of
/// references that are deeper than the stack, registers larger than the memory.
/// \return what is wrong, empty if nothing is
std::string ProblemOfReferences(xmlNode* root);

} // namespace KltAPI
} // namespace OPX

#endif
