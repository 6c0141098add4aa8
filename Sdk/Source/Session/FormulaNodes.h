#ifndef FORMULANODES_H
#define FORMULANODES_H

#include "Base/GlibPtr.h"

#include <arv.h>

#include <string>

namespace OPX
{
namespace KltAPI
{

/// Has Aravis parse a description that was checked; null if it cannot. The formulas in it are worked out by `Formula`,
/// and Aravis' own evaluator has no part in it. Any thread.
/// \param device what the registers are read from and written to; outlives the description
///
/// This is done where Aravis' nodes ask each other, in the interfaces of the four kinds of nodes with formulas, and not
/// in the text of the description, which users see. Nodes of other descriptions in the process are handed on to Aravis.
ObjectPtr<ArvGc> NewDescription(ArvDevice* device, const std::string& xml);

} // namespace KltAPI
} // namespace OPX

#endif
