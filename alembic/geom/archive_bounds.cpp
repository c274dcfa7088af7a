/// Bounds of a whole archive.
#include <Alembic/AbcGeom/ArchiveBounds.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

const char* const bounds_name = ".childBnds";

} // namespace

IBox3dProperty GetIArchiveBounds(IArchive& archive, const Argument& arg0, const Argument& arg1)
{
    if (!archive.getPtr()) {
        return IBox3dProperty();
    }
    return IBox3dProperty(archive.getTop().getProperties(), bounds_name, arg0, arg1);
}

OBox3dProperty CreateOArchiveBounds(OArchive& archive, const Argument& arg0, const Argument& arg1, const Argument& arg2)
{
    return OBox3dProperty(archive.getTop().getProperties(), bounds_name, arg0, arg1, arg2);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
