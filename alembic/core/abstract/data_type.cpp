/// Data types as text.
#include <Alembic/AbcCoreAbstract/DataType.h>

#include <ostream>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

std::ostream& operator<<(std::ostream& ostr, const DataType& a)
{
    ostr << PODName(a.getPod());
    if (a.getExtent() > 1) ostr << "[" << static_cast<unsigned>(a.getExtent()) << "]";
    return ostr;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
