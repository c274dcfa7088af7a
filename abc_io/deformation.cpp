/// Where a time falls among the samples, and what is read and blended there.
#include "deformation.h"

#include "read_array.h"

#include <algorithm>
#include <cmath>

using namespace Alembic::AbcGeom;

namespace {

using Points = CoreArray<GMathVec3<float>>;

// Intended: a sample this near (seconds) is taken as it is, without blending.
constexpr double near_enough = 0.001;

float* floats(Points& points)
{
    return points.get_count() ? &points.get_data()->x : nullptr;
}
std::size_t float_count(const Points& points)
{
    return std::size_t(points.get_count()) * 3;
}

/// One evaluation: where the time falls among the samples, and the two outputs as they are filled.
class Evaluation
{
public:
    Evaluation(const MovingPoints& source, bool ignore_velocities, Points& positions, Points& velocities)
        : source_(source)
        , ignore_velocities_(ignore_velocities)
        , positions_(positions)
        , velocities_(velocities)
    {
    }

    void at(double time)
    {
        const auto count = static_cast<index_t>(source_.sample_count);
        const TimeSampling& sampling = *source_.sampling;
        const auto [near, near_time] = sampling.getNearIndex(time, count);
        const bool between = count >= 2 && time >= sampling.getSampleTime(0) &&
                             time <= sampling.getSampleTime(count - 1) && std::fabs(time - near_time) > near_enough;
        if (!between) return at_sample(near, near_time);
        const auto [floor, floor_time] = sampling.getFloorIndex(time, count);
        const auto [ceil, ceil_time] = sampling.getCeilIndex(time, count);
        // A sampling whose look-up finds one sample on both sides leaves nothing to blend.
        if (ceil_time <= floor_time) return at_sample(near, near_time);
        between_samples(time, floor, floor_time, ceil, ceil_time);
    }

private:
    void between_samples(double time, index_t floor, double floor_time, index_t ceil, double ceil_time)
    {
        read_positions(floor, positions_);
        // Intended: only the earlier sample's velocities count, those of the later one are not read.
        const bool stored = has_stored_velocities(floor);
        const double seconds_after_floor = time - floor_time;
        const double per_second = 1.0 / (ceil_time - floor_time);
        if (!source_.keep_identity || point_count(ceil) != positions_.get_count()) {
            use_velocities(stored, floor);
            if (stored)
                extrapolate(floats(positions_), floats(velocities_), float_count(positions_), seconds_after_floor,
                            source_.rounding);
            return;
        }
        // The later sample is read into the array that then becomes the velocities: nothing is allocated on the way.
        read_positions(ceil, velocities_);
        const double weight = seconds_after_floor * per_second;
        if (stored) {
            blend(floats(positions_), floats(velocities_), float_count(positions_), weight, source_.rounding);
            use_velocities(true, floor);
        } else {
            blend_with_velocities(floats(positions_), floats(velocities_), float_count(positions_), weight, per_second,
                                  source_.rounding);
        }
    }

    void at_sample(index_t near, double near_time)
    {
        read_positions(near, positions_);
        if (has_stored_velocities(near)) return use_velocities(true, near);
        const index_t next = near + 1;
        // Intended: forward differences at every sample, and zero at the last one.
        if (!source_.keep_identity || next >= static_cast<index_t>(source_.sample_count) ||
            point_count(next) != positions_.get_count())
            return use_velocities(false, near);
        // Where a cycle ends when the next one starts, two samples share a time: nothing moves in no time.
        const double span = source_.sampling->getSampleTime(next) - near_time;
        if (!(span > 0.0)) return use_velocities(false, near);
        read_positions(next, velocities_);
        difference(floats(positions_), floats(velocities_), float_count(positions_), 1.0 / span, source_.rounding);
    }

    /// Fills the velocities from the file, or with zeros.
    void use_velocities(bool stored, index_t sample)
    {
        if (stored && read_array(source_.velocities, sample, velocities_)) return;
        velocities_.resize_for_overwrite(positions_.get_count());
        velocities_.fill(GMathVec3<float>(0.0f, 0.0f, 0.0f));
    }

    bool has_stored_velocities(index_t sample) const
    {
        return !ignore_velocities_ && source_.velocities.valid() && source_.velocities.getNumSamples() > 0 &&
               element_count(source_.velocities, sample) == positions_.get_count();
    }

    std::size_t point_count(index_t sample) const
    {
        if (const auto kept = kept_positions()) return kept->get_count();
        return element_count(source_.positions, sample);
    }

    void read_positions(index_t sample, Points& into)
    {
        if (const auto kept = kept_positions()) {
            into = *kept;
            return;
        }
        if (!read_array(source_.positions, sample, into)) into.resize_for_overwrite(0);
        if (source_.kept && source_.positions.isConstant()) source_.kept->keep(into);
    }

    std::shared_ptr<const Points> kept_positions() const { return source_.kept ? source_.kept->get() : nullptr; }

    const MovingPoints& source_;
    const bool ignore_velocities_;
    Points& positions_;
    Points& velocities_;
};

} // namespace

void evaluate_moving_points(const MovingPoints& points, double time, bool ignore_velocities,
                            CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities)
{
    if (points.sample_count == 0 || !points.positions.valid() || points.positions.getNumSamples() == 0) return;
    Evaluation(points, ignore_velocities, positions, velocities).at(time);
}
