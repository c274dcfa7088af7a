/// Samples around a time, and the one between two.
#include "xform_samples.h"

#include "rotation_interpolation.h"

#include <cmath>
#include <cstddef>
#include <string>

using namespace Alembic::AbcGeom;

namespace {

constexpr double nearest_blend = 0.0001; // seconds after a sample, up to which that sample is taken as it is
constexpr double shortest_axis = 1e-8;   // a shorter vector part of a quaternion gives no axis
constexpr double pi = 3.14159265358979323846;
// Intended: slightly above 180 / pi.
constexpr double degrees_per_radian = 57.29577951309679;

XformSample read_sample(const IXformSchema& schema, index_t index)
{
    return schema.getValue(ISampleSelector(index));
}

/// 0, 1 or 2 for a rotation about X, Y or Z; -1 for any other operation.
int single_axis(const XformOp& op)
{
    return op.isRotateXOp() ? 0 : op.isRotateYOp() ? 1 : op.isRotateZOp() ? 2 : -1;
}

Imath::Quatd quaternion_of(const XformOp& axis_angle)
{
    const V3d axis(axis_angle.getChannelValue(0), axis_angle.getChannelValue(1), axis_angle.getChannelValue(2));
    const double length = axis.length();
    if (length == 0.0) return Imath::Quatd(); // no axis, no rotation
    const double half_angle = axis_angle.getChannelValue(3) * pi / 360.0;
    return Imath::Quatd(std::cos(half_angle), axis / length * std::sin(half_angle));
}

void set_axis_angle(const Imath::Quatd& rotation, XformOp& op)
{
    const double length = rotation.v.length();
    const V3d axis = length <= shortest_axis ? V3d(0.0) : rotation.v / length;
    for (int i = 0; i < 3; ++i)
        op.setChannelValue(static_cast<std::size_t>(i), axis[i]);
    op.setChannelValue(3, 2.0 * std::atan2(length, rotation.r) * degrees_per_radian);
}

XformOp interpolate_op(const XformOp& floor, const XformOp& ceil, double weight)
{
    XformOp op(floor.getType(), floor.getHint());
    if (op.isRotateOp()) {
        set_axis_angle(interpolate_quaternion(quaternion_of(floor), quaternion_of(ceil), weight), op);
        return op;
    }
    for (std::size_t i = 0; i < op.getNumChannels(); ++i)
        op.setChannelValue(i, (1.0 - weight) * floor.getChannelValue(i) + weight * ceil.getChannelValue(i));
    return op;
}

/// Rotations about different single axes that follow one another, interpolated as one rotation. What they are meant for
/// does not matter: a run may begin among the rotations and end among those of the orientation.
struct RotationRun
{
    std::size_t first = 0;
    std::size_t end = 0;
    std::string axes; ///< in the order they act on a point: the last operation's first
    GMathVec3<double> floor_degrees{0.0, 0.0, 0.0};
    GMathVec3<double> ceil_degrees{0.0, 0.0, 0.0};
};

RotationRun find_rotation_run(const XformSample& floor, const XformSample& ceil, std::size_t first)
{
    RotationRun run;
    run.first = run.end = first;
    for (; run.end < floor.getNumOps(); ++run.end) {
        const int axis = single_axis(floor[run.end]);
        if (axis < 0 || run.axes.find("XYZ"[axis]) != std::string::npos) break;
        run.axes.insert(run.axes.begin(), "XYZ"[axis]);
        run.floor_degrees[static_cast<std::size_t>(axis)] = floor[run.end].getAngle();
        run.ceil_degrees[static_cast<std::size_t>(axis)] = ceil[run.end].getAngle();
    }
    return run;
}

void add_rotation_run(const XformSample& floor, const RotationRun& run, double weight, XformSample& result)
{
    const GMathVec3<double> degrees = interpolate_angles(run.axes, run.floor_degrees, run.ceil_degrees, weight);
    for (std::size_t i = run.first; i < run.end; ++i) {
        XformOp op(floor[i].getType(), floor[i].getHint());
        op.setAngle(degrees[static_cast<std::size_t>(single_axis(op))]);
        result.addOp(op);
    }
}

} // namespace

XformSpan read_xform_span(const IXformSchema& schema, double time)
{
    XformSpan span;
    const auto count = static_cast<index_t>(schema.getNumSamples());
    if (count == 0) return span;
    const TimeSamplingPtr sampling = schema.getTimeSampling();
    const auto [floor_index, floor_time] = sampling->getFloorIndex(time, count);
    span.floor = read_sample(schema, floor_index);

    const bool in_range = time >= sampling->getSampleTime(0) && time <= sampling->getSampleTime(count - 1);
    if (!in_range || !(time - floor_time > nearest_blend) || count == 1) return span;
    const auto [ceil_index, ceil_time] = sampling->getCeilIndex(time, count);
    if (!(ceil_time > floor_time)) return span;
    span.ceil = read_sample(schema, ceil_index);
    span.weight = (time - floor_time) / (ceil_time - floor_time);
    span.is_between = true;
    return span;
}

bool evaluate_xform_span(XformSpan& span, XformSample& sample)
{
    if (!span.is_between) {
        sample = span.floor;
        return true;
    }
    if (!span.floor.isTopologyEqual(span.ceil)) return false;
    sample = interpolate_xform(span.floor, span.ceil, span.weight);
    return true;
}

XformSample interpolate_xform(const XformSample& floor, const XformSample& ceil, double weight)
{
    XformSample result; // inherits: intended
    for (std::size_t i = 0; i < floor.getNumOps();) {
        const RotationRun run = find_rotation_run(floor, ceil, i);
        if (run.end > i) {
            add_rotation_run(floor, run, weight, result);
            i = run.end;
        } else {
            result.addOp(interpolate_op(floor[i], ceil[i], weight));
            ++i;
        }
    }
    return result;
}
