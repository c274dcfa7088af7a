/// Whether a face may be in several face sets of its mesh.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

enum FaceSetExclusivity : int {
    kFaceSetNonExclusive = 0,
    kFaceSetExclusive = 1,
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
