#include <quorel/threads/SyncPoint.h>

#include <boost/make_shared.hpp>

namespace quorel {
namespace threads {

SyncPoint::SyncPoint(unsigned int inCount) : mBarrier(boost::make_shared<Barrier>(inCount)) {}

SyncPoint::SyncPoint(std::string const& inName, unsigned int inCount)
    : mBarrier(boost::make_shared<Barrier>(inName, inCount)) {}

SyncPoint::~SyncPoint() = default;

bool SyncPoint::Wait() {
    boost::shared_ptr<Barrier> const barrier = mBarrier;
    return barrier->Wait();
}

}  // namespace threads
}  // namespace quorel
