// Byte streams over a std::deque<unsigned char> that the caller owns: IDequeByteStream and
// ODequeByteStream, declared with the other adapters in AdapterByteStream.h.
#ifndef QUOREL_FILESUPPORT_DEQUEBYTESTREAM_H
#define QUOREL_FILESUPPORT_DEQUEBYTESTREAM_H

#include <quorel/filesupport/AdapterByteStream.h>

#endif
