/// Normals of deforming polygon meshes at any time.
#include "abc_input.h"

#include "normal_maps.h"
#include "read_array.h"
#include "reader_scope.h"
#include "topology.h"

#include <utility>

using namespace Alembic::AbcGeom;

namespace {

void evaluate_normals(const IPolyMeshSchema& schema, double time, CoreArray<GeometryNormalMap>& normal_maps)
{
    const IN3fGeomParam normals = schema.getNormalsParam();
    if (schema.getPositionsProperty().getNumSamples() == 0 || !normals.valid() || normals.getNumSamples() == 0) return;
    const std::optional<SampleSpan> span = find_normals_span(normals, time);

    const ISampleSelector at(time, span ? ISampleSelector::kFloorIndex : ISampleSelector::kNearIndex);
    const std::size_t corner_count = element_count(schema.getFaceIndicesProperty(), at);
    CoreArray<unsigned int> face_counts;
    if (!read_array(schema.getFaceCountsProperty(), at, face_counts)) return;
    // Polygons whose counts do not add up cannot be turned round: such a mesh has no map.
    if (!face_counts_add_up(face_counts, corner_count)) return;

    const ISampleSelector selector = span ? ISampleSelector(span->floor) : at;
    if (!read_corner_normals(normals, selector, face_counts, corner_count, normal_maps) || !span) return;
    if (blend_normals(normals, *span, time, normal_maps[0])) return;
    // Intended: where the samples cannot be blended, the earlier one is taken with y and z exchanged.
    for (GMathVec3<float>& normal : normal_maps[0].values)
        std::swap(normal.y, normal.z);
}

} // namespace

bool AbcInput::evaluate_mesh_normals(const AbcInputArchiveHandle& handle, const double& time,
                                     CoreArray<GeometryNormalMap>& normal_maps)
{
    // An object of another kind has no normals here: nothing is touched, and that is no failure.
    if (!with_handle_object<IPolyMesh>(handle, [&](const IPolyMesh& mesh) {
            evaluate_normals(mesh.getSchema(), time, normal_maps);
            return true;
        }))
        return handle.is_object_valid();
    return true;
}

bool AbcInput::load_mesh_normals(const AbcFileList& files, const CoreString& object_name, const double& time,
                                 CoreArray<GeometryNormalMap>& normal_maps)
{
    return with_typed_object<IPolyMesh>(files, object_name, [&](const AbcInputArchiveHandle& handle, const IPolyMesh&) {
        return evaluate_mesh_normals(handle, time, normal_maps);
    });
}
