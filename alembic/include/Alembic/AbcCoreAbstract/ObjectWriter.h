/// An object of an archive that is written.
#pragma once

#include <Alembic/AbcCoreAbstract/ForwardDeclarations.h>
#include <Alembic/AbcCoreAbstract/Foundation.h>
#include <Alembic/AbcCoreAbstract/ObjectHeader.h>

#include <string>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ObjectWriter : private Alembic::Util::noncopyable
{
public:
    virtual ~ObjectWriter();

    virtual const ObjectHeader& getHeader() const = 0;
    const std::string& getName() const { return getHeader().getName(); }
    const std::string& getFullName() const { return getHeader().getFullName(); }
    const MetaData& getMetaData() const { return getHeader().getMetaData(); }

    virtual ArchiveWriterPtr getArchive() = 0;
    /// Null for the top.
    virtual ObjectWriterPtr getParent() = 0;
    virtual CompoundPropertyWriterPtr getProperties() = 0;

    /// Children created so far.
    virtual size_t getNumChildren() = 0;
    /// Throws when out of range.
    virtual const ObjectHeader& getChildHeader(size_t i) = 0;
    /// Null when there is no such child.
    virtual const ObjectHeader* getChildHeader(const std::string& name) = 0;
    /// Null when there is no such child, or its writer is gone. By index: throws when out of range.
    virtual ObjectWriterPtr getChild(const std::string& name) = 0;
    ObjectWriterPtr getChild(size_t i);

    /// Throws for a name that is taken, empty, or contains `/`.
    virtual ObjectWriterPtr createChild(const ObjectHeader& header) = 0;

    virtual ObjectWriterPtr asObjectPtr() = 0;

protected:
    ObjectWriter() = default;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
