/// String properties whose value is the full name of an object.
#pragma once

#include <Alembic/Abc/Foundation.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// Sets metadata `reference` to `1`.
ALEMBIC_EXPORT void SetReference(AbcA::MetaData& metaData);
/// The header's metadata say so.
ALEMBIC_EXPORT bool isReference(const AbcA::PropertyHeader& header);

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
