#include "Session/RegisterLength.h"

#include "Base/ErrorCodes.h"
#include "Base/GlibPtr.h"
#include "Description/DocumentLimits.h"

namespace OPX
{
namespace KltAPI
{

KltErrorType LengthOf(ArvGcRegister* node, guint64& length)
{
    CallError error;
    length = arv_gc_register_get_length(node, error.Out());
    if (error.Get() != nullptr)
        return CodeOf(error.Get());
    return length > static_cast<guint64>(MaximumRegisterLength) ? KltErrorResources : KltErrorSuccess;
}

KltErrorType CheckLength(ArvGcFeatureNode* node)
{
    guint64 length = 0;
    if (!ARV_IS_GC_REGISTER(node))
        return KltErrorSuccess;
    const KltErrorType result = LengthOf(ARV_GC_REGISTER(node), length);
    return result == KltErrorSuccess && length == 0 ? KltErrorInvalidValue : result;
}

} // namespace KltAPI
} // namespace OPX
