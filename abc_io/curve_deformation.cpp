/// Deforming curves: which samples exist, how they differ, and the control points at any time.
#include "abc_input.h"

#include "abc_deformation_header.h"
#include "abc_internal.h"
#include "deformation.h"
#include "deformation_header_reading.h"
#include "reader_scope.h"

using namespace Alembic::AbcGeom;

namespace {

/// `kept`: see MovingPoints.
void evaluate(const ICurves& curves, const StaticPositions* kept, double time, bool ignore_velocities,
              CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities)
{
    MovingPoints points = moving_points_of(curves, kept);
    points.rounding = BlendRounding::DOUBLE_PRODUCTS;
    evaluate_moving_points(points, time, ignore_velocities, positions, velocities);
}

void get_sampling(const ICurves& curves, double start, double end, GMathTimeSampling& sampling)
{
    const ICurvesSchema& schema = curves.getSchema();
    AbcInternal::get_frame_sampling(positions_sampling(schema, curves), schema.getPositionsProperty().getNumSamples(),
                                    start, end, sampling);
}

} // namespace

bool AbcInput::get_curve_sampling(const AbcInputArchiveHandle& handle, const double& start, const double& end,
                                  GMathTimeSampling& sampling)
{
    return with_handle_object<ICurves>(handle, [&](const ICurves& curves) {
        get_sampling(curves, start, end, sampling);
        return true;
    });
}

bool AbcInput::get_curve_sampling(const AbcFileList& files, const CoreString& object_path, const double& start,
                                  const double& end, GMathTimeSampling& sampling)
{
    return with_typed_object<ICurves>(files, object_path, [&](const AbcInputArchiveHandle&, const ICurves& curves) {
        get_sampling(curves, start, end, sampling);
        return true;
    });
}

bool AbcInput::get_curve_deformation_header(AbcInputArchiveHandle& handle, const CoreString& object_path,
                                            AbcDeformationHeader& header)
{
    const ScopedLock lock(handle);
    handle.delete_object(); // first, so that a failure leaves the handle without an object
    return with_bound_object<ICurves>(handle, object_path, [&](const AbcInputArchiveHandle&, const ICurves& curves) {
        const ICurvesSchema& schema = curves.getSchema();
        header.deformation_type = deformation_type_of(schema.getTopologyVariance());
        set_sample_range(header, schema.getPositionsProperty().getNumSamples(), *positions_sampling(schema, curves));
        return true;
    });
}

bool AbcInput::evaluate_curve_deformation(const AbcInputArchiveHandle& handle, const double& time,
                                          CoreArray<GMathVec3<float>>& positions,
                                          CoreArray<GMathVec3<float>>& velocities, bool ignore_file_velocities)
{
    return with_handle_object<ICurves>(handle, [&](const ICurves& curves) {
        evaluate(curves, kept_with(curves), time, ignore_file_velocities, positions, velocities);
        return true;
    });
}

bool AbcInput::load_curve_deformation(const AbcFileList& files, const CoreString& object_path, const double& time,
                                      CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities,
                                      bool ignore_file_velocities)
{
    return with_typed_object<ICurves>(files, object_path, [&](const AbcInputArchiveHandle&, const ICurves& curves) {
        evaluate(curves, nullptr, time, ignore_file_velocities, positions, velocities);
        return true;
    });
}
