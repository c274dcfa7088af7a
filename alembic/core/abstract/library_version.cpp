/// The library's version as text.
#include <Alembic/AbcCoreAbstract/Foundation.h>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

std::string GetLibraryVersionShort()
{
    return std::to_string(ALEMBIC_LIBRARY_VERSION_MAJOR) + "." + std::to_string(ALEMBIC_LIBRARY_VERSION_MINOR) + "." +
           std::to_string(ALEMBIC_LIBRARY_VERSION_PATCH);
}

std::string GetLibraryVersion()
{
    return "Alembic " + GetLibraryVersionShort() + " (built " __DATE__ " " __TIME__ ")";
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
