/// The name that data had in the application they come from.
#pragma once

#include <Alembic/Abc/Foundation.h>

#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// Metadata `sourceName`; "" when absent.
ALEMBIC_EXPORT std::string GetSourceName(const AbcA::MetaData& metaData);
ALEMBIC_EXPORT void SetSourceName(AbcA::MetaData& metaData, const std::string& name);

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
