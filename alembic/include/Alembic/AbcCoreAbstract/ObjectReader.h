/// An object of an archive that is read.
#pragma once

#include <Alembic/AbcCoreAbstract/ForwardDeclarations.h>
#include <Alembic/AbcCoreAbstract/Foundation.h>
#include <Alembic/AbcCoreAbstract/ObjectHeader.h>

#include <string>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ObjectReader : private Alembic::Util::noncopyable
{
public:
    virtual ~ObjectReader();

    virtual const ObjectHeader& getHeader() const = 0;
    const std::string& getName() const { return getHeader().getName(); }
    const std::string& getFullName() const { return getHeader().getFullName(); }
    const MetaData& getMetaData() const { return getHeader().getMetaData(); }

    virtual ArchiveReaderPtr getArchive() = 0;
    /// Null for the top.
    virtual ObjectReaderPtr getParent() = 0;
    virtual CompoundPropertyReaderPtr getProperties() = 0;

    virtual size_t getNumChildren() = 0;
    /// Throws when out of range.
    virtual const ObjectHeader& getChildHeader(size_t i) = 0;
    /// Null when there is no such child.
    virtual const ObjectHeader* getChildHeader(const std::string& name) = 0;
    /// Null when there is no such child.
    virtual ObjectReaderPtr getChild(const std::string& name) = 0;
    /// Throws when out of range.
    virtual ObjectReaderPtr getChild(size_t i) = 0;

    /// A hash of all properties below; false, `digest` untouched, where the archive has none.
    virtual bool getPropertiesHash(Digest& digest);
    /// A hash of all children; false, `digest` untouched, where the archive has none.
    virtual bool getChildrenHash(Digest& digest);

    virtual ObjectReaderPtr asObjectPtr() = 0;

protected:
    ObjectReader() = default;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
