/// A handle of a compound property that is being written.
#pragma once

#include <Alembic/Abc/OBaseProperty.h>
#include <Alembic/Abc/SchemaInfo.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT OCompoundProperty : public OBasePropertyT<AbcA::CompoundPropertyWriterPtr>
{
public:
    typedef OCompoundProperty this_type;

    /// Invalid.
    OCompoundProperty() = default;

    /// Creates the compound of that name, or reopens it. The policy is throw or an argument's, never the parent's.
    OCompoundProperty(AbcA::CompoundPropertyWriterPtr parent, const std::string& name,
                      const Argument& arg0 = Argument(), const Argument& arg1 = Argument());
    OCompoundProperty(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                      const Argument& arg1 = Argument());

    /// Takes over a writer.
    explicit OCompoundProperty(AbcA::CompoundPropertyWriterPtr ptr, const Argument& arg0 = Argument(),
                               const Argument& arg1 = Argument());
    OCompoundProperty(AbcA::CompoundPropertyWriterPtr ptr, WrapExistingFlag, const Argument& arg0 = Argument(),
                      const Argument& arg1 = Argument());

    /// An object's own compound, with the object's policy or an argument's.
    explicit OCompoundProperty(OObject object, const Argument& arg0 = Argument(), const Argument& arg1 = Argument());
    OCompoundProperty(OObject object, TopFlag, const Argument& arg0 = Argument(), const Argument& arg1 = Argument());

    /// Properties created so far. By index out of range: an error; by name, null or invalid when absent.
    size_t getNumProperties() const;
    const AbcA::PropertyHeader& getPropertyHeader(size_t i) const;
    const AbcA::PropertyHeader* getPropertyHeader(const std::string& name) const;
    OBaseProperty getProperty(size_t i) const;
    OBaseProperty getProperty(const std::string& name) const;

    /// Invalid for an object's own compound.
    OCompoundProperty getParent() const;

protected:
    explicit OCompoundProperty(ErrorHandler::Policy policy)
        : OBasePropertyT<AbcA::CompoundPropertyWriterPtr>(policy)
    {
    }

    /// What schemas do when made: create their compound. Guarded.
    void create_schema(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                       const SchemaDescription& schema, const Arguments& args);

private:
    void init_by_name(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name, const Argument& arg0,
                      const Argument& arg1);
    void init_from_object(const OObject& object);
};

inline AbcA::CompoundPropertyWriterPtr GetCompoundPropertyWriterPtr(OCompoundProperty prp)
{
    return prp.getPtr();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
