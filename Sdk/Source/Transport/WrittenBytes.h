#ifndef WRITTENBYTES_H
#define WRITTENBYTES_H

#include <arv.h>

namespace OPX
{
namespace KltAPI
{

template <class Bytes>
Bytes BytesOf(gboolean (*write)(ArvDevice*, guint64, guint32, Bytes, GError**));

/// How Aravis hands a device what is to be written: as `const void*`, or as `void*` if it is older than that.
using WrittenBytes = decltype(BytesOf(ArvDeviceClass::write_memory));

} // namespace KltAPI
} // namespace OPX

#endif
