/// The one copy of all typed scalar properties being read.
#include <Alembic/Abc/ITypedScalarProperty.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

#define ALEMBIC_ABC_INSTANTIATE(NAME, TRAITS) template class ITypedScalarProperty<TRAITS>;
ALEMBIC_ABC_FOR_EACH_TYPE(ALEMBIC_ABC_INSTANTIATE)

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
