/// AbcInput::load_mesh: a polygon or subdivision mesh at the sample nearest to a time.
#include "abc_input.h"

#include "log_message.h"
#include "normal_maps.h"
#include "read_array.h"
#include "reader_scope.h"
#include "shading_groups.h"
#include "topology.h"
#include "uv_maps.h"

#include <vo_app_base/app_progress_bar.h>

using namespace Alembic::AbcGeom;

namespace {

/// Where a mesh goes.
struct MeshArrays
{
    CoreArray<GMathVec3<float>>& positions;
    CoreArray<GMathVec3<float>>& velocities;
    CoreArray<unsigned int>& face_indices;
    CoreArray<unsigned int>& face_counts;
    CoreArray<unsigned int>& face_groups;
    CoreArray<CoreString>& group_names;
    CoreArray<GeometryUvMap>& uv_maps;
    CoreArray<GeometryNormalMap>& normal_maps;
};

/// What is loaded, and how it is reported.
struct MeshRequest
{
    const AbcFileList& files;
    const CoreString& object_name;
    ISampleSelector selector;
    AppProgressBar* progress;

    void show(float value) const
    {
        if (progress) progress->set_value(value);
    }
};

bool report_corrupt_topology(const AbcFileList& files)
{
    log_message(log_level_warning, [&](CoreLogStream& stream) {
        stream << "The Alembic archive from file(s) '" << files.join() << "' is corrupted\n";
    });
    return false;
}

/// Reads a property's sample, or empties `values` where there is none.
template <class T>
void read_or_empty(const IArrayProperty& property, const ISampleSelector& selector, CoreArray<T>& values)
{
    if (!read_array(property, selector, values)) values.resize(0);
}

/// Counts and indices, checked and in the host's winding. False when they do not describe polygons on the positions.
template <class Schema>
bool read_topology(const Schema& schema, const ISampleSelector& selector, MeshArrays& mesh)
{
    read_or_empty(schema.getFaceCountsProperty(), selector, mesh.face_counts);
    const IInt32ArrayProperty indices = schema.getFaceIndicesProperty();
    if (!face_counts_add_up(mesh.face_counts, element_count(indices, selector))) return false;
    if (element_count(indices, selector) == 0) {
        mesh.face_indices.resize(0);
        return true;
    }
    // Intended: an index equal to the number of positions is accepted, only a greater one is corrupt.
    const std::uint64_t end = std::uint64_t(mesh.positions.get_count()) + 1;
    if (read_corner_indices(indices, selector, end, mesh.face_counts, mesh.face_indices)) return true;
    mesh.face_indices.resize(0); // the caller must not meet an index that leads out of the positions
    return false;
}

void read_normals(const IPolyMeshSchema& schema, const ISampleSelector& selector, MeshArrays& mesh)
{
    read_corner_normals(schema.getNormalsParam(), selector, mesh.face_counts, mesh.face_indices.get_count(),
                        mesh.normal_maps);
}

/// A subdivision mesh has no normals of its own.
void read_normals(const ISubDSchema&, const ISampleSelector&, MeshArrays&) {}

/// False when the topology is corrupt; positions, velocities and counts are then filled, and nothing else is touched.
template <class Schema>
bool read_mesh(const Schema& schema, const MeshRequest& request, MeshArrays& mesh)
{
    request.show(0.0f);
    read_or_empty(schema.getPositionsProperty(), request.selector, mesh.positions);
    read_or_empty(schema.getVelocitiesProperty(), request.selector, mesh.velocities);
    request.show(0.3f);
    if (!read_topology(schema, request.selector, mesh)) return report_corrupt_topology(request.files);
    request.show(0.6f);
    read_shading_groups(schema, request.object_name, mesh.face_counts.get_count(), mesh.face_groups, mesh.group_names);
    read_normals(schema, request.selector, mesh);
    read_uv_maps(schema.getUVsParam(), schema.getArbGeomParams(), schema, request.selector,
                 {mesh.face_counts, mesh.face_indices, mesh.positions.get_count()}, mesh.uv_maps);
    return true;
}

} // namespace

bool AbcInput::load_mesh(const AbcFileList& files, const CoreString& object_name, const double& time,
                         CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities,
                         CoreArray<unsigned int>& face_indices, CoreArray<unsigned int>& face_counts,
                         CoreArray<unsigned int>& face_groups, CoreArray<CoreString>& group_names,
                         CoreArray<GeometryUvMap>& uv_maps, CoreArray<GeometryNormalMap>& normal_maps,
                         CoreVector<CoreString>& property_names, AppProgressBar* progress)
{
    MeshArrays mesh{positions, velocities, face_indices, face_counts, face_groups, group_names, uv_maps, normal_maps};
    const MeshRequest request{files, object_name, ISampleSelector(time, ISampleSelector::kNearIndex), progress};
    return with_typed_object<IPolyMesh, ISubD>(files, object_name,
                                               [&](AbcInputArchiveHandle& handle, const auto& typed) {
                                                   // An object without samples is not an error: outputs stay as they
                                                   // are.
                                                   if (typed.getSchema().getPositionsProperty().getNumSamples() == 0)
                                                       return true;
                                                   if (!read_mesh(typed.getSchema(), request, mesh)) return false;
                                                   get_property_names(handle, object_name, property_names);
                                                   request.show(1.0f);
                                                   return true;
                                               });
}
