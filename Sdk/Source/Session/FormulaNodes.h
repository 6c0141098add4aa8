#ifndef FORMULANODES_H
#define FORMULANODES_H

#include <arv.h>

namespace OPX
{
namespace KltAPI
{

/// From now on the formulas of this description are worked out by `Formula`, and Aravis' own evaluator has no part in
/// it. Any thread; to be called before the first value is asked for.
///
/// This is done where Aravis' nodes ask each other, in the interfaces of the four kinds of nodes with formulas, and not
/// in the text of the description: that of a network camera was fetched and parsed by Aravis itself. Nodes of other
/// descriptions in the process are handed on to Aravis.
void UseOwnFormulas(ArvGc* description);

} // namespace KltAPI
} // namespace OPX

#endif
