/// AbcInput::load_curve: curves at the sample nearest to a time.
#include "abc_input.h"

#include "abc_curve_header.h"
#include "curve_maps.h"
#include "log_message.h"
#include "normal_maps.h"
#include "read_array.h"
#include "reader_scope.h"
#include "topology.h"

#include <array>
#include <utility>

using namespace Alembic::AbcGeom;

namespace {

/// Reads basis, type and wrap alone, as stored: the schema's own sample would bring every array with it.
void read_types(const ICurvesSchema& schema, const ISampleSelector& selector, AbcCurveHeader& header)
{
    std::array<std::uint8_t, 4> type_wrap_basis = {kCubic, kNonPeriodic, kBezierBasis, kBezierBasis};
    const IScalarProperty property(schema, "curveBasisAndType");
    if (property.getNumSamples() > 0 && property.getDataType() == DataType(Alembic::Util::kUint8POD, 4))
        property.get(type_wrap_basis.data(), selector);
    header.curve_type = static_cast<AbcCurveHeader::CurveType>(type_wrap_basis[0]);
    header.periodicity_type = static_cast<AbcCurveHeader::PeriodicityType>(type_wrap_basis[1]);
    header.basis_type = static_cast<AbcCurveHeader::BasisType>(type_wrap_basis[2]);
}

bool report_corrupt_curves(const AbcFileList& files, const CoreString& object_path, std::size_t position_count)
{
    log_message(log_level_warning, [&](CoreLogStream& stream) {
        stream << "The curves " << object_path << " in the Alembic archive from file(s) '" << files.join()
               << "' are corrupted: a vertex count is negative, or they ask for more than the " << position_count
               << " points that are stored. Was the export interrupted?\n";
    });
    return false;
}

} // namespace

bool AbcInput::load_curve(const AbcFileList& files, const CoreString& object_path, const double& time,
                          AbcCurveHeader& header, AppProgressBar*)
{
    const ISampleSelector at(time, ISampleSelector::kNearIndex);
    return with_typed_object<ICurves>(files, object_path, [&](AbcInputArchiveHandle& handle, const ICurves& curves) {
        const ICurvesSchema& schema = curves.getSchema();
        const IP3fArrayProperty positions = schema.getPositionsProperty();
        if (positions.getNumSamples() == 0) return true; // the record stays as it is

        // Curves that reach beyond their points are refused before anything in the record changes.
        CoreArray<unsigned int> vertex_counts;
        read_array(schema.getNumVerticesProperty(), at, vertex_counts);
        const std::size_t position_count = element_count(positions, at);
        if (!counts_fit(vertex_counts, position_count))
            return report_corrupt_curves(files, object_path, position_count);

        read_types(schema, at, header);
        read_array(schema.getOrdersProperty(), at, header.orders); // untouched where none are stored
        if (!read_array(positions, at, header.positions)) header.positions.resize(0);
        header.vertex_counts = std::move(vertex_counts);
        read_curve_radii(schema, at, header);
        read_curve_uvs(schema, at, header);
        read_curve_colors(schema, at, header);
        read_normal_map(schema.getNormalsParam(), at, header.positions.get_count(), header.normal_maps);
        get_property_names(handle, object_path, header.property_names);
        return true;
    });
}
