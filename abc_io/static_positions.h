/// StaticPositions: positions that never change, kept with a bound object so that evaluating it again reads nothing.
#pragma once

#include <vo_core/core_array.h>
#include <vo_gmath/gmath_vec3.h>

#include <memory>
#include <mutex>
#include <utility>

/// Safe to use from several threads; the mutex is held for the copy of a pointer only.
class StaticPositions
{
public:
    using Positions = CoreArray<GMathVec3<float>>;

    /// The kept positions, or null.
    std::shared_ptr<const Positions> get() const
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return positions_;
    }

    /// Keeps a copy of `positions`, unless there is one already.
    void keep(const Positions& positions) const
    {
        auto copy = std::make_shared<const Positions>(positions);
        const std::lock_guard<std::mutex> lock(mutex_);
        if (!positions_) positions_ = std::move(copy);
    }

private:
    mutable std::mutex mutex_;
    mutable std::shared_ptr<const Positions> positions_;
};
