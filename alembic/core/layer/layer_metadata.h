/// What an object's or property's metadata says about the layers below it.
#pragma once

#include <Alembic/AbcCoreLayer/Util.h>

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

/// Hides the object or property of that name. Stronger than replacing.
bool is_prune(const AbcCoreAbstract::MetaData& metadata);

/// Hides what weaker layers have in it.
bool is_replace(const AbcCoreAbstract::MetaData& metadata);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
