/// Deforming meshes: which samples exist, how they differ, and the positions at any time.
#include "abc_input.h"

#include "abc_deformation_header.h"
#include "abc_internal.h"
#include "deformation.h"
#include "deformation_header_reading.h"
#include "reader_scope.h"

using namespace Alembic::AbcGeom;

namespace {

std::size_t position_sample_count(const IPolyMeshSchema& schema)
{
    return schema.getPositionsProperty().getNumSamples();
}
std::size_t position_sample_count(const ISubDSchema& schema)
{
    return schema.getNumSamples();
}

/// Positions between samples and velocities of any schema that has both. `kept`: see MovingPoints.
template <class Kind>
bool evaluate(const Kind& typed, const StaticPositions* kept, double time, bool ignore_velocities,
              CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities)
{
    evaluate_moving_points(moving_points_of(typed, kept), time, ignore_velocities, positions, velocities);
    return true;
}

} // namespace

bool AbcInput::get_mesh_sampling(const AbcInputArchiveHandle& handle, const double& start_time, const double& end_time,
                                 GMathTimeSampling& sampling)
{
    return with_handle_object<IPolyMesh, ISubD>(handle, [&](const auto& typed) {
        const auto& schema = typed.getSchema();
        AbcInternal::get_frame_sampling(positions_sampling(schema, typed), position_sample_count(schema), start_time,
                                        end_time, sampling);
        return true;
    });
}

bool AbcInput::get_mesh_sampling(const AbcFileList& files, const CoreString& object_name, const double& start_time,
                                 const double& end_time, GMathTimeSampling& sampling)
{
    return with_typed_object<IPolyMesh, ISubD>(files, object_name,
                                               [&](const AbcInputArchiveHandle& handle, const auto&) {
                                                   return get_mesh_sampling(handle, start_time, end_time, sampling);
                                               });
}

bool AbcInput::get_mesh_deformation_header(AbcInputArchiveHandle& handle, const CoreString& object_name,
                                           AbcDeformationHeader& header)
{
    const ScopedLock lock(handle);
    handle.delete_object(); // first, so that a failure leaves the handle without an object
    return with_bound_object<IPolyMesh, ISubD>(
        handle, object_name, [&](const AbcInputArchiveHandle&, const auto& typed) {
            const auto& schema = typed.getSchema();
            header.deformation_type = deformation_type_of(schema.getTopologyVariance());
            set_sample_range(header, position_sample_count(schema), *positions_sampling(schema, typed));
            return true;
        });
}

bool AbcInput::evaluate_mesh_deformation(const AbcInputArchiveHandle& handle, const double& time,
                                         CoreArray<GMathVec3<float>>& positions,
                                         CoreArray<GMathVec3<float>>& velocities, bool ignore_velocities)
{
    return with_handle_object<IPolyMesh, ISubD, ICurves>(handle, [&](const auto& typed) {
        return evaluate(typed, kept_with(typed), time, ignore_velocities, positions, velocities);
    });
}

bool AbcInput::load_mesh_deformation(const AbcFileList& files, const CoreString& object_name, const double& time,
                                     CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities,
                                     bool ignore_velocities)
{
    return with_typed_object<IPolyMesh, ISubD>(
        files, object_name, [&](const AbcInputArchiveHandle&, const auto& typed) {
            return evaluate(typed, nullptr, time, ignore_velocities, positions, velocities);
        });
}
