/// Geometry parameters, written: what does not depend on their type.
#include <Alembic/AbcGeom/OGeomParam.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

AbcA::MetaData geom_param_metadata(AbcA::MetaData metadata, const AbcA::DataType& type,
                                   const std::string& interpretation, GeometryScope scope, size_t array_extent)
{
    metadata.set("isGeomParam", "true");
    metadata.set("podName", Alembic::Util::PODName(type.getPod()));
    metadata.set("podExtent", std::to_string(type.getExtent()));
    metadata.set("arrayExtent", std::to_string(array_extent));
    if (!interpretation.empty()) metadata.set("interpretation", interpretation);
    SetGeometryScope(metadata, scope);
    return metadata;
}

#define ALEMBIC_ABCGEOM_DEFINE_OGEOMPARAM(NAME, TRAITS) template class OTypedGeomParam<TRAITS>;
ALEMBIC_ABC_FOR_EACH_TYPE(ALEMBIC_ABCGEOM_DEFINE_OGEOMPARAM)
#undef ALEMBIC_ABCGEOM_DEFINE_OGEOMPARAM

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
