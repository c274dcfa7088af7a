/// A handle of an object that is being read: a node of the archive's tree.
#pragma once

#include <Alembic/Abc/Argument.h>
#include <Alembic/Abc/Base.h>
#include <Alembic/Abc/Foundation.h>
#include <Alembic/Abc/IArchive.h>

#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class ICompoundProperty;
struct InstancePath;

/// Copies share one reader. A child that is stored as an instance of another object reads as that object, with names of
/// its own. An invalid handle answers quietly with empty values.
class ALEMBIC_EXPORT IObject : public Base
{
public:
    typedef IObject this_type;

    /// Invalid.
    IObject() = default;
    IObject(const IObject&) = default;
    IObject(IObject&&) = default;
    IObject& operator=(const IObject&) = default;
    IObject& operator=(IObject&&) = default;
    virtual ~IObject();

    /// The child of that name, with the parent's policy or the argument's. Invalid without an error when there is none.
    IObject(const IObject& parent, const std::string& name, const Argument& arg0 = Argument());

    /// Takes over a reader as it is stored: an instance is not followed.
    IObject(AbcA::ObjectReaderPtr ptr, const Argument& arg0 = Argument());
    IObject(AbcA::ObjectReaderPtr ptr, WrapExistingFlag, const Argument& arg0 = Argument());

    /// The archive's top object, with the archive's policy or the argument's.
    IObject(IArchive& archive, const Argument& arg0 = Argument());
    IObject(IArchive& archive, TopFlag flag, const Argument& arg0 = Argument());

    /// As stored; of an instance, the header of the object it stands for.
    const AbcA::ObjectHeader& getHeader() const;
    /// Name and full name are those of the instance where the object is one or lies below one.
    const std::string& getName() const;
    const std::string& getFullName() const;
    const AbcA::MetaData& getMetaData() const;

    IArchive getArchive() const;
    /// The object above, through the instance where there is one; the top has none.
    IObject getParent() const;

    size_t getNumChildren() const;
    /// Headers of children, as stored. By index out of range: an error; by name, null when absent.
    const AbcA::ObjectHeader& getChildHeader(size_t i) const;
    const AbcA::ObjectHeader* getChildHeader(const std::string& name) const;
    /// Children in the order of creation. By index out of range: an error; by name, invalid when absent.
    IObject getChild(size_t childIndex) const;
    IObject getChild(const std::string& childName) const;

    /// The object's own compound. It has the throw policy, whatever the object's.
    ICompoundProperty getProperties() const;

    /// The object is an instance itself.
    bool isInstanceRoot() const;
    /// The object is an instance or lies below one.
    bool isInstanceDescendant() const { return instance_ != nullptr; }
    /// Full name of the object an instance stands for; "" for all other objects.
    std::string instanceSourcePath() const;
    bool isChildInstance(size_t childIndex) const;
    bool isChildInstance(const std::string& childName) const;
    /// The stored object that makes this one an instance; null for all other objects.
    AbcA::ObjectReaderPtr getInstancePtr() const;

    AbcA::ObjectReaderPtr getPtr() const { return m_object; }
    /// Drops the reader and empties the log; the policy stays.
    virtual void reset();
    /// There is a reader and no error was logged.
    virtual bool valid() const;

    /// Hashes of all properties and of all that is below; false where the archive keeps none.
    bool getPropertiesHash(Digest& digest);
    bool getChildrenHash(Digest& digest);

    ALEMBIC_OPERATOR_BOOL(valid());

    AbcA::ObjectReaderPtr m_object;

protected:
    /// An invalid handle of that policy, to be filled by a derived class.
    explicit IObject(ErrorHandler::Policy policy)
        : Base(policy)
    {
    }

    /// Becomes the child of that name, following an instance; an absent child leaves the handle without a reader.
    /// Unguarded: throws what the reader throws.
    void open_child(const IObject& parent, const std::string& name);

private:
    typedef std::shared_ptr<const InstancePath> InstancePathPtr;

    IObject(AbcA::ObjectReaderPtr object, InstancePathPtr instance, ErrorHandler::Policy policy);

    /// The handle for a child's reader.
    IObject handle_of_child(AbcA::ObjectReaderPtr child) const;

    InstancePathPtr instance_; ///< null outside of instances
};

typedef std::shared_ptr<IObject> IObjectPtr;

inline AbcA::ObjectReaderPtr GetObjectReaderPtr(IObject& prp)
{
    return prp.getPtr();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic

#include <Alembic/Abc/ICompoundProperty.h>
