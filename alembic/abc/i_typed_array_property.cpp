/// The one copy of all typed array properties being read.
#include <Alembic/Abc/ITypedArrayProperty.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

#define ALEMBIC_ABC_INSTANTIATE(NAME, TRAITS) template class ITypedArrayProperty<TRAITS>;
ALEMBIC_ABC_FOR_EACH_TYPE(ALEMBIC_ABC_INSTANTIATE)

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
