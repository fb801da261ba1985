// quorel's two string types.
//
// UTF8String holds UTF-8 code units (what is stored, keyed and written to
// files), UTF16String holds UTF-16 code units in machine byte order (what
// crosses the library's interfaces).  Neither checks what it holds.  Both keep
// short contents inside the object (15 UTF-8 or 7 UTF-16 units) and take longer
// buffers from the small-block allocator.
#ifndef QUOREL_UTILITY_UNICODESTRING_H
#define QUOREL_UTILITY_UNICODESTRING_H

#include <quorel/utility/CodeUnitTraits.h>
#include <quorel/utility/SmallBlockAllocator.h>

#include <string>

namespace quorel {

using UTF8String = std::basic_string<unsigned char, CodeUnitTraits<unsigned char>,
                                     utility::SmallBlockAllocator::STLAllocator<unsigned char>>;

using UTF16String = std::basic_string<unsigned short, CodeUnitTraits<unsigned short>,
                                      utility::SmallBlockAllocator::STLAllocator<unsigned short>>;

}  // namespace quorel

#endif
