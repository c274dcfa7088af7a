/// A handle of an object that is being written.
#pragma once

#include <Alembic/Abc/Argument.h>
#include <Alembic/Abc/Base.h>
#include <Alembic/Abc/Foundation.h>
#include <Alembic/Abc/OArchive.h>

#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class OCompoundProperty;

/// Copies share one writer. An invalid handle answers questions quietly with empty values.
class ALEMBIC_EXPORT OObject : public Base
{
public:
    typedef OObject this_type;

    /// Invalid.
    OObject() = default;
    OObject(const OObject&) = default;
    OObject(OObject&&) = default;
    OObject& operator=(const OObject&) = default;
    OObject& operator=(OObject&&) = default;
    virtual ~OObject();

    /// Creates a child, with the parent's policy or an argument's. Metadata may be an argument.
    OObject(OObject parentObject, const std::string& name, const Argument& arg0 = Argument(),
            const Argument& arg1 = Argument(), const Argument& arg2 = Argument());

    /// Takes over a writer.
    OObject(AbcA::ObjectWriterPtr ptr, const Argument& arg0 = Argument(), const Argument& arg1 = Argument(),
            const Argument& arg2 = Argument());
    OObject(AbcA::ObjectWriterPtr ptr, WrapExistingFlag, const Argument& arg0 = Argument(),
            const Argument& arg1 = Argument(), const Argument& arg2 = Argument());

    /// The archive's top object, with the throw policy or an argument's.
    OObject(OArchive& archive, const Argument& arg0 = Argument(), const Argument& arg1 = Argument(),
            const Argument& arg2 = Argument());
    OObject(OArchive& archive, TopFlag, const Argument& arg0 = Argument(), const Argument& arg1 = Argument(),
            const Argument& arg2 = Argument());

    const AbcA::ObjectHeader& getHeader() const;
    const std::string& getName() const { return getHeader().getName(); }
    const std::string& getFullName() const { return getHeader().getFullName(); }
    const AbcA::MetaData& getMetaData() const { return getHeader().getMetaData(); }

    OArchive getArchive() const;
    /// Invalid for the top.
    OObject getParent() const;

    /// Children created so far. By index out of range: an error; by name, null or invalid when absent.
    size_t getNumChildren() const;
    const AbcA::ObjectHeader& getChildHeader(size_t i) const;
    const AbcA::ObjectHeader* getChildHeader(const std::string& name) const;
    OObject getChild(size_t childIndex) const;
    OObject getChild(const std::string& childName) const;

    /// The object's own compound. It has the throw policy, whatever the object's.
    OCompoundProperty getProperties() const;

    /// Creates a child that reads as `target`, an object of the same archive. False, without an error, when that
    /// cannot be: an invalid object, an empty name, another archive, a target that is itself an instance, the top, or
    /// an object that the child would lie in.
    bool addChildInstance(OObject target, const std::string& name);

    AbcA::ObjectWriterPtr getPtr() { return object_; }
    const AbcA::ObjectWriterPtr getPtr() const { return object_; }
    /// Drops the writer and empties the log; the policy stays.
    virtual void reset();
    virtual bool valid() const;

    ALEMBIC_OPERATOR_BOOL(valid());

protected:
    /// An invalid handle of that policy, to be filled by a derived class.
    explicit OObject(ErrorHandler::Policy policy)
        : Base(policy)
    {
    }

    /// Creates the child; unguarded. `caller` is named in the error for an invalid parent.
    void create_child(const OObject& parent, const std::string& name, const AbcA::MetaData& meta_data,
                      const char* caller);

    AbcA::ObjectWriterPtr object_;
};

typedef std::shared_ptr<OObject> OObjectPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic

#include <Alembic/Abc/OCompoundProperty.h>
