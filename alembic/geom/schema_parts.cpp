/// Parts of writing schemas that need no template.
#include "geom/schema_parts.h"

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

AbcA::MetaData scope_metadata(GeometryScope scope)
{
    AbcA::MetaData metadata;
    SetGeometryScope(metadata, scope);
    return metadata;
}

void SelfBoundsPart::write(const Abc::Box3d& given, const Abc::P3fArraySample& positions, Absent absent)
{
    // Intended: the first sample takes a flat box, later ones only a box with volume.
    const bool is_first = owner_.num_samples() == 0;
    const bool is_given = is_first ? !given.isEmpty() : given.hasVolume();
    if (is_given)
        set(given);
    else if (positions.valid() || (is_first && absent == Absent::repeats))
        set(ComputeBoundsFromPositions(positions));
    else
        leave_out(absent);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
