#include <quorel/utility/RefCountedObject.h>

namespace quorel {
namespace utility {

// Out of line so that the class's virtual table has one home, in the library.
RefCountedObject::~RefCountedObject() = default;

}  // namespace utility
}  // namespace quorel
