#ifndef REFERENCEGRAPH_H
#define REFERENCEGRAPH_H

#include <libxml/tree.h>

#include <string>

namespace OPX
{
namespace KltAPI
{

/// Looks for what makes the evaluation of a description endless or too large: nodes that need their own value to work
/// it out, chains of references that are deeper than the stack, nodes that are evaluated millions of times for one
/// value, registers larger than the memory.
///
/// Limits and states (pMax, pIsLocked and the like) may go round in circles: of the node that they belong to no value
/// is asked then, and cameras do have two features that limit each other.
/// \return what is wrong, empty if nothing is
std::string ProblemOfReferences(xmlNode* root);

} // namespace KltAPI
} // namespace OPX

#endif
