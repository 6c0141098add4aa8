#ifndef NODEMAP_H
#define NODEMAP_H

#include "Base/GlibPtr.h"
#include "Safety/SafeDescription.h"

#include <arv.h>

#include <mutex>

namespace OPX::KltAPI
{

/// Held while Aravis parses a description, whoever has it do so: its parser keeps static state.
std::mutex& ParserLock();

/// Has Aravis make the node map of a description that was checked; null if it cannot. Its formulas are evaluated by
/// `Formula`, not by Aravis' own evaluator. Any thread.
/// \param device what the registers are read from and written to; outlives the node map, as the description does
///
/// This is done where Aravis' nodes call each other, in the interfaces of the four kinds of nodes with formulas, and
/// not in the text of the description, which users see. Other node maps in the process are left to Aravis.
ObjectPtr<ArvGc> NewNodeMap(ArvDevice* device, const SafeDescription& description);

/// What the check of a description has found that Aravis does not tell.
const SafeDescription& DescriptionOf(ArvGcNode* node);

} // namespace OPX::KltAPI

#endif
