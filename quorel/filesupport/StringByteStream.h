// Byte streams over a std::string that the caller owns: IStringByteStream and
// OStringByteStream, declared with the other adapters in AdapterByteStream.h.
#ifndef QUOREL_FILESUPPORT_STRINGBYTESTREAM_H
#define QUOREL_FILESUPPORT_STRINGBYTESTREAM_H

#include <quorel/filesupport/AdapterByteStream.h>

#endif
