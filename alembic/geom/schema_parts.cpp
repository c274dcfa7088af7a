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

void SelfBoundsPart::set_for(const Abc::Box3d& given, const Abc::P3fArraySample& positions)
{
    // Intended: the first sample takes a flat box, later ones only a box with volume.
    const bool is_first = owner_.num_samples() == 0;
    if (is_first ? !given.isEmpty() : given.hasVolume())
        set(given);
    else if (is_first || positions.valid())
        set(ComputeBoundsFromPositions(positions));
    else
        repeat();
}

void SelfBoundsPart::set_for_partial(const Abc::Box3d& given, const Abc::P3fArraySample& positions)
{
    if (!given.isEmpty() || positions.valid()) set_for(given, positions);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
