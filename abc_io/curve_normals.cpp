/// Normals of deforming curves at any time.
#include "abc_input.h"

#include "normal_maps.h"
#include "read_array.h"
#include "reader_scope.h"

using namespace Alembic::AbcGeom;

namespace {

void evaluate_normals(const ICurvesSchema& schema, double time, CoreArray<GeometryNormalMap>& normal_maps)
{
    const IN3fGeomParam normals = schema.getNormalsParam();
    const IP3fArrayProperty positions = schema.getPositionsProperty();
    if (positions.getNumSamples() == 0 || !normals.valid() || normals.getNumSamples() == 0) return;
    const std::optional<SampleSpan> span = find_normals_span(normals, time);

    const ISampleSelector at(time, span ? ISampleSelector::kFloorIndex : ISampleSelector::kNearIndex);
    const ISampleSelector selector = span ? ISampleSelector(span->floor) : at;
    if (!read_normal_map(normals, selector, element_count(positions, at), normal_maps)) return;
    // Samples of different size cannot be blended: the earlier one is taken as it is.
    if (span) blend_normals(normals, *span, time, normal_maps[0]);
}

} // namespace

bool AbcInput::evaluate_curve_normals(const AbcInputArchiveHandle& handle, const double& time,
                                      CoreArray<GeometryNormalMap>& normal_maps)
{
    return with_handle_object<ICurves>(handle, [&](const ICurves& curves) {
        evaluate_normals(curves.getSchema(), time, normal_maps);
        return true;
    });
}

bool AbcInput::load_curve_normals(const AbcFileList& files, const CoreString& object_path, const double& time,
                                  CoreArray<GeometryNormalMap>& normal_maps)
{
    return with_typed_object<ICurves>(files, object_path, [&](const AbcInputArchiveHandle&, const ICurves& curves) {
        evaluate_normals(curves.getSchema(), time, normal_maps);
        return true;
    });
}
