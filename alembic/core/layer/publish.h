/// Things that are made when first asked for, without a lock.
#pragma once

#include <Alembic/Util/Foundation.h>

#include <atomic>
#include <memory>

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

/// Puts `made` into `place`, which owns it from then on, unless another thread was faster; gives what is there.
template <class T, class M>
T& publish(std::atomic<T*>& place, std::unique_ptr<M> made)
{
    T* there = nullptr;
    if (place.compare_exchange_strong(there, made.get(), std::memory_order_acq_rel, std::memory_order_acquire))
        return *made.release();
    return *there;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
