/// Titles, base types and compound names of the geometry schemas.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcGeom_GeomBase_v1", "", ".geom", false, GeomBaseSchemaInfo);
ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcGeom_PolyMesh_v1", "AbcGeom_GeomBase_v1", ".geom", false, PolyMeshSchemaInfo);
ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcGeom_SubD_v1", "AbcGeom_GeomBase_v1", ".geom", false, SubDSchemaInfo);
ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcGeom_FaceSet_v1", "AbcGeom_GeomBase_v1", ".faceset", false, FaceSetSchemaInfo);
ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcGeom_Curve_v2", "AbcGeom_GeomBase_v1", ".geom", false, CurvesSchemaInfo);
ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcGeom_Points_v1", "AbcGeom_GeomBase_v1", ".geom", false, PointsSchemaInfo);
ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcGeom_NuPatch_v2", "AbcGeom_GeomBase_v1", ".geom", false, NuPatchSchemaInfo);
ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcGeom_Xform_v3", "", ".xform", true, XformSchemaInfo);
ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcGeom_Camera_v1", "", ".geom", true, CameraSchemaInfo);
ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcGeom_Light_v1", "", ".geom", true, LightSchemaInfo);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
