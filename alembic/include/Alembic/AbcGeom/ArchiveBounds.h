/// The box around everything in an archive: property `.childBnds` of its top object.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// The archive's bounds. An archive without them is an error, by the policy among the arguments (throw by default); an
/// invalid archive gives an invalid property.
ALEMBIC_EXPORT IBox3dProperty GetIArchiveBounds(IArchive& archive, const Argument& arg0 = Argument(),
                                                const Argument& arg1 = Argument());

/// Creates the archive's bounds. A time sampling, or the index of one, among the arguments is that of the property.
ALEMBIC_EXPORT OBox3dProperty CreateOArchiveBounds(OArchive& archive, const Argument& arg0 = Argument(),
                                                   const Argument& arg1 = Argument(),
                                                   const Argument& arg2 = Argument());

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
