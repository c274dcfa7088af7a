/// Title and place of the schema of collections.
#pragma once

#include <Alembic/Abc/All.h>

namespace Alembic {
namespace AbcCollection {

namespace Abc = ::Alembic::Abc;
using namespace Abc;

inline namespace ALEMBIC_VERSION_NS {

ALEMBIC_ABC_DECLARE_SCHEMA_INFO("AbcCollection_Collections_v1", "", ".collection", false, CollectionsSchemaInfo);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCollection
} // namespace Alembic
