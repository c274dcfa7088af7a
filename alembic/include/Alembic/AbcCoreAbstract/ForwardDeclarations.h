/// The abstract readers and writers by name only, with their pointers.
#pragma once

#include <Alembic/AbcCoreAbstract/Foundation.h>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

#define ALEMBIC_FORWARD(CLASS)                                                                                         \
    class ALEMBIC_EXPORT CLASS;                                                                                        \
    typedef Alembic::Util::shared_ptr<CLASS> CLASS##Ptr

ALEMBIC_FORWARD(ArchiveReader);
ALEMBIC_FORWARD(ArchiveWriter);
ALEMBIC_FORWARD(ObjectReader);
ALEMBIC_FORWARD(ObjectWriter);
ALEMBIC_FORWARD(BasePropertyReader);
ALEMBIC_FORWARD(BasePropertyWriter);
ALEMBIC_FORWARD(ScalarPropertyReader);
ALEMBIC_FORWARD(ScalarPropertyWriter);
ALEMBIC_FORWARD(ArrayPropertyReader);
ALEMBIC_FORWARD(ArrayPropertyWriter);
ALEMBIC_FORWARD(CompoundPropertyReader);
ALEMBIC_FORWARD(CompoundPropertyWriter);
ALEMBIC_FORWARD(ReadArraySampleCache);

#undef ALEMBIC_FORWARD

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
