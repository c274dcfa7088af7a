/// Title and place of the schema of materials.
#pragma once

#include <Alembic/Abc/All.h>

namespace Alembic {
namespace AbcMaterial {

namespace Abc = ::Alembic::Abc;
using namespace Abc;

inline namespace ALEMBIC_VERSION_NS {

ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcMaterial_Material_v1", "", ".material", false, MaterialSchemaInfo);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcMaterial
} // namespace Alembic
