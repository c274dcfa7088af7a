/// Points: which samples exist, and positions and velocities at any time.
#include "abc_input.h"

#include "abc_deformation_header.h"
#include "abc_internal.h"
#include "deformation.h"
#include "deformation_header_reading.h"
#include "reader_scope.h"

#include <algorithm>

using namespace Alembic::AbcGeom;

namespace {

/// The samples to choose from: those of the positions or those of the ids, whichever are more, as far as the positions'
/// sampling has a time for them.
std::size_t point_sample_count(const IPointsSchema& schema, const TimeSampling& sampling)
{
    const std::size_t count =
        std::max(schema.getPositionsProperty().getNumSamples(), schema.getIdsProperty().getNumSamples());
    return sampling.getTimeSamplingType().isAcyclic() ? std::min(count, sampling.getNumStoredTimes()) : count;
}

/// `kept`: see MovingPoints.
void evaluate(const IPoints& typed, const StaticPositions* kept, double time, bool ignore_velocities,
              CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities)
{
    const IPointsSchema& schema = typed.getSchema();
    MovingPoints points = moving_points_of(typed, kept);
    points.sample_count = point_sample_count(schema, *points.sampling);
    points.keep_identity = schema.getIdsProperty().isConstant(); // known without reading an id
    points.rounding = BlendRounding::DOUBLE_PRODUCTS;
    evaluate_moving_points(points, time, ignore_velocities, positions, velocities);
}

} // namespace

bool AbcInput::load_points(AbcInputArchiveHandle& handle, const CoreString& object_path, const double& time,
                           CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities,
                           bool ignore_file_velocities, CoreVector<CoreString>& property_names, AppProgressBar*)
{
    return with_bound_object<IPoints>(handle, object_path, [&](AbcInputArchiveHandle& bound, const IPoints& points) {
        // The found object, not the handle's: another thread may have emptied the handle since.
        evaluate(points, nullptr, time, ignore_file_velocities, positions, velocities);
        get_property_names(bound, object_path, property_names);
        return true;
    });
}

bool AbcInput::load_points_geometry(const AbcInputArchiveHandle& handle, CoreArray<GMathVec3<float>>& positions,
                                    CoreArray<GMathVec3<float>>& velocities, const double& time,
                                    bool ignore_file_velocities)
{
    return with_handle_object<IPoints>(handle, [&](const IPoints& points) {
        evaluate(points, kept_with(points), time, ignore_file_velocities, positions, velocities);
        return true;
    });
}

bool AbcInput::evaluate_point_deformation(const AbcInputArchiveHandle& handle, const double& time,
                                          CoreArray<GMathVec3<float>>& positions,
                                          CoreArray<GMathVec3<float>>& velocities, bool)
{
    const ScopedLock lock(handle);
    // Intended: stored velocities are used here whatever the caller asks.
    return load_points_geometry(handle, positions, velocities, time, false);
}

bool AbcInput::get_point_sampling(const AbcInputArchiveHandle& handle, const double& start, const double& end,
                                  GMathTimeSampling& sampling)
{
    return with_handle_object<IPoints>(handle, [&](const IPoints& points) {
        const TimeSamplingPtr times = positions_sampling(points.getSchema(), points);
        AbcInternal::get_frame_sampling(times, point_sample_count(points.getSchema(), *times), start, end, sampling);
        return true;
    });
}

bool AbcInput::get_point_deformation_header(AbcInputArchiveHandle& handle, const CoreString& object_path,
                                            AbcDeformationHeader& header)
{
    const ScopedLock lock(handle);
    handle.delete_object(); // first, so that a failure leaves the handle without an object
    return with_bound_object<IPoints>(handle, object_path, [&](const AbcInputArchiveHandle&, const IPoints& points) {
        const TimeSamplingPtr times = positions_sampling(points.getSchema(), points);
        const std::size_t count = point_sample_count(points.getSchema(), *times);
        // Intended: never homogeneous, since points may come and go.
        header.deformation_type = count < 2 ? AbcDeformationHeader::DEFORMATION_TYPE_CONSTANT
                                            : AbcDeformationHeader::DEFORMATION_TYPE_HETEROGENEOUS;
        set_sample_range(header, count, *times);
        return true;
    });
}
