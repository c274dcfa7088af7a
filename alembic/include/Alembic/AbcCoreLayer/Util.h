/// Metadata by which an object or property of one layer hides what weaker layers have of that name.
#pragma once

#include <Alembic/AbcCoreAbstract/Foundation.h>
#include <Alembic/AbcCoreAbstract/MetaData.h>

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

/// Hides the object or property itself: it is not there at all.
ALEMBIC_EXPORT void SetPrune(AbcCoreAbstract::MetaData& metaData, bool shouldPrune);

/// Hides the contents that weaker layers gave it: children, properties and metadata start anew. Of a simple property
/// the strongest layer's is read in any case.
ALEMBIC_EXPORT void SetReplace(AbcCoreAbstract::MetaData& metaData, bool shouldReplace);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
