/// What the abstract readers do themselves: the rest is their back ends'.
#include <Alembic/AbcCoreAbstract/All.h>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

ReadArraySampleCache::~ReadArraySampleCache() = default;
ArchiveReader::~ArchiveReader() = default;
ObjectReader::~ObjectReader() = default;
BasePropertyReader::~BasePropertyReader() = default;
ScalarPropertyReader::~ScalarPropertyReader() = default;
ArrayPropertyReader::~ArrayPropertyReader() = default;
CompoundPropertyReader::~CompoundPropertyReader() = default;

bool ObjectReader::getPropertiesHash(Digest&)
{
    return false;
}

bool ObjectReader::getChildrenHash(Digest&)
{
    return false;
}

ScalarPropertyReaderPtr BasePropertyReader::asScalarPtr()
{
    return ScalarPropertyReaderPtr();
}

ArrayPropertyReaderPtr BasePropertyReader::asArrayPtr()
{
    return ArrayPropertyReaderPtr();
}

CompoundPropertyReaderPtr BasePropertyReader::asCompoundPtr()
{
    return CompoundPropertyReaderPtr();
}

bool ArrayPropertyReader::getPart(index_t, uint64_t, size_t, void*)
{
    return false;
}

ScalarPropertyReaderPtr CompoundPropertyReader::getScalarProperty(size_t i)
{
    return getScalarProperty(getPropertyHeader(i).getName());
}

ArrayPropertyReaderPtr CompoundPropertyReader::getArrayProperty(size_t i)
{
    return getArrayProperty(getPropertyHeader(i).getName());
}

CompoundPropertyReaderPtr CompoundPropertyReader::getCompoundProperty(size_t i)
{
    return getCompoundProperty(getPropertyHeader(i).getName());
}

BasePropertyReaderPtr CompoundPropertyReader::getProperty(const std::string& name)
{
    const PropertyHeader* const header = getPropertyHeader(name);
    if (!header) return BasePropertyReaderPtr();
    if (header->isScalar()) return getScalarProperty(name);
    if (header->isArray()) return getArrayProperty(name);
    return getCompoundProperty(name);
}

BasePropertyReaderPtr CompoundPropertyReader::getProperty(size_t i)
{
    return getProperty(getPropertyHeader(i).getName());
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
