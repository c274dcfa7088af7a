/// What the abstract writers do themselves: the rest is their back ends'.
#include <Alembic/AbcCoreAbstract/All.h>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

ArchiveWriter::~ArchiveWriter() = default;
ObjectWriter::~ObjectWriter() = default;
BasePropertyWriter::~BasePropertyWriter() = default;
ScalarPropertyWriter::~ScalarPropertyWriter() = default;
ArrayPropertyWriter::~ArrayPropertyWriter() = default;
CompoundPropertyWriter::~CompoundPropertyWriter() = default;

ObjectWriterPtr ObjectWriter::getChild(size_t i)
{
    return getChild(getChildHeader(i).getName());
}

ScalarPropertyWriterPtr BasePropertyWriter::asScalarPtr()
{
    return ScalarPropertyWriterPtr();
}

ArrayPropertyWriterPtr BasePropertyWriter::asArrayPtr()
{
    return ArrayPropertyWriterPtr();
}

CompoundPropertyWriterPtr BasePropertyWriter::asCompoundPtr()
{
    return CompoundPropertyWriterPtr();
}

BasePropertyWriterPtr CompoundPropertyWriter::getProperty(size_t i)
{
    return getProperty(getPropertyHeader(i).getName());
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
