/// Where a time falls among the samples, and what is read and blended there.
#include "deformation.h"

#include "sample_pieces.h"
#include "sample_span.h"

#include <algorithm>

using namespace Alembic::AbcGeom;

namespace {

using Points = CoreArray<GMathVec3<float>>;

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
        const TimeSampling& sampling = *source_.sampling;
        if (const auto span = find_sample_span(sampling, source_.sample_count, time))
            return between_samples(time, *span);
        const auto [near, near_time] = sampling.getNearIndex(time, static_cast<index_t>(source_.sample_count));
        at_sample(near, near_time);
    }

private:
    void between_samples(double time, const SampleSpan& span)
    {
        const index_t floor = span.floor, ceil = span.ceil;
        const std::size_t count = point_count(floor);
        // Intended: only the earlier sample's velocities count, those of the later one are not read.
        const bool stored = has_stored_velocities(floor, count);
        const double seconds_after_floor = time - span.floor_time;
        const double per_second = 1.0 / (span.ceil_time - span.floor_time);
        const BlendRounding rounding = source_.rounding;
        if (!source_.keep_identity || point_count(ceil) != count) {
            read_positions(floor, positions_);
            use_velocities(stored, floor);
            if (stored)
                extrapolate(floats(positions_), floats(velocities_), float_count(positions_), seconds_after_floor,
                            rounding);
            return;
        }
        const double weight = seconds_after_floor * per_second;
        if (stored) {
            combine_samples(floor, ceil, count, false,
                            [=](const float* from, const float* to, float* positions, float*, std::size_t numbers) {
                                blend(from, to, positions, numbers, weight, rounding);
                            });
            use_velocities(true, floor);
        } else {
            combine_samples(
                floor, ceil, count, false,
                [=](const float* from, const float* to, float* positions, float* velocities, std::size_t numbers) {
                    blend_with_velocities(from, to, positions, velocities, numbers, weight, per_second, rounding);
                });
        }
    }

    void at_sample(index_t near, double near_time)
    {
        const std::size_t count = point_count(near);
        const index_t next = near + 1;
        const bool stored = has_stored_velocities(near, count);
        // Intended: forward differences at every sample, and zero at the last one.
        if (stored || !source_.keep_identity || next >= static_cast<index_t>(source_.sample_count) ||
            point_count(next) != count) {
            read_positions(near, positions_);
            return use_velocities(stored, near);
        }
        // Where a cycle ends when the next one starts, two samples share a time: nothing moves in no time.
        const double span = source_.sampling->getSampleTime(next) - near_time;
        if (!(span > 0.0)) {
            read_positions(near, positions_);
            return use_velocities(false, near);
        }
        const double per_second = 1.0 / span;
        const BlendRounding rounding = source_.rounding;
        combine_samples(near, next, count, true,
                        [=](const float* from, const float* to, float*, float* velocities, std::size_t numbers) {
                            difference(from, to, velocities, numbers, per_second, rounding);
                        });
    }

    /// Reads two samples of `count` points and calls `combine(from, to, positions, velocities, numbers)` on their
    /// numbers, in pieces or at once, in place or not. `is_from_wanted`: the positions are those of `from`, unchanged.
    template <class Combine>
    void combine_samples(index_t from, index_t to, std::size_t count, bool is_from_wanted, Combine combine)
    {
        const SamplePieces<GMathVec3<float>> from_pieces(source_.positions, from, count);
        const SamplePieces<GMathVec3<float>> to_pieces(source_.positions, to, count);
        const bool is_kept = source_.kept && source_.positions.isConstant(); // read whole, once
        if (is_kept || !can_hold<GMathVec3<float>>(source_.positions, count) || !from_pieces.is_worthwhile()) {
            // The later sample is read into the array that then becomes the velocities: nothing is allocated on the
            // way.
            read_positions(from, positions_);
            read_positions(to, velocities_);
            combine(floats(positions_), floats(velocities_), floats(positions_), floats(velocities_),
                    float_count(positions_));
            return;
        }
        positions_.resize_for_overwrite(count);
        velocities_.resize_for_overwrite(count);
        // Both samples pass through two pieces of memory that stay in the cache; only results go out to the arrays.
        constexpr std::size_t length = piece_length<GMathVec3<float>>;
        CoreArray<GMathVec3<float>> passing;
        passing.resize_for_overwrite(2 * length);
        GMathVec3<float>* const to_piece = passing.get_data() + length;
        for (std::size_t first = 0; first < count; first += length) {
            const std::size_t part = std::min(length, count - first);
            GMathVec3<float>* const from_piece = is_from_wanted ? positions_.get_data() + first : passing.get_data();
            from_pieces.read(first, part, from_piece);
            to_pieces.read(first, part, to_piece);
            combine(&from_piece->x, &to_piece->x, floats(positions_) + first * 3, floats(velocities_) + first * 3,
                    part * 3);
        }
    }

    /// Fills the velocities from the file, or with zeros.
    void use_velocities(bool stored, index_t sample)
    {
        if (stored && read_array(source_.velocities, sample, velocities_)) return;
        velocities_.resize_for_overwrite(positions_.get_count());
        velocities_.fill(GMathVec3<float>(0.0f, 0.0f, 0.0f));
    }

    /// Whether there are as many stored velocities as there are positions.
    bool has_stored_velocities(index_t sample, std::size_t count) const
    {
        return !ignore_velocities_ && source_.velocities.valid() && source_.velocities.getNumSamples() > 0 &&
               element_count(source_.velocities, sample) == count;
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
