#include <quorel/arrange/Arrangement.h>
#include <quorel/arrange/Separator.h>

namespace quorel {
namespace arrange {

ISeparator::~ISeparator() = default;

namespace impl {

IArrangement::~IArrangement() = default;

}  // namespace impl
}  // namespace arrange
}  // namespace quorel
