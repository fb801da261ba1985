// Byte streams over standard streams that the caller owns: IStdByteStream and
// OStdByteStream, declared with the other adapters in AdapterByteStream.h.
#ifndef QUOREL_FILESUPPORT_STDBYTESTREAM_H
#define QUOREL_FILESUPPORT_STDBYTESTREAM_H

#include <quorel/filesupport/AdapterByteStream.h>

#endif
