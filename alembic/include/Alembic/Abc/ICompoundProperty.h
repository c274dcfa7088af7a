/// A handle of a compound property that is being read: properties by name.
#pragma once

#include <Alembic/Abc/IBaseProperty.h>
#include <Alembic/Abc/SchemaInfo.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ICompoundProperty : public IBasePropertyT<AbcA::CompoundPropertyReaderPtr>
{
public:
    typedef ICompoundProperty this_type;

    /// Invalid.
    ICompoundProperty() = default;

    /// The compound of that name inside another. Error: `Nonexistent compound property: NAME`.
    ICompoundProperty(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument());

    /// Takes over a reader.
    ICompoundProperty(AbcA::CompoundPropertyReaderPtr ptr, const Argument& arg0 = Argument(),
                      const Argument& arg1 = Argument());
    ICompoundProperty(AbcA::CompoundPropertyReaderPtr ptr, WrapExistingFlag, const Argument& arg0 = Argument(),
                      const Argument& arg1 = Argument());

    /// An object's own compound, with the object's policy or the arguments'.
    ICompoundProperty(const IObject& object, const Argument& arg0 = Argument(), const Argument& arg1 = Argument());
    ICompoundProperty(const IObject& object, TopFlag, const Argument& arg0 = Argument(),
                      const Argument& arg1 = Argument());

    size_t getNumProperties() const;
    /// Headers in the order of creation. By index out of range: an error; by name, null when absent.
    const AbcA::PropertyHeader& getPropertyHeader(size_t i) const;
    const AbcA::PropertyHeader* getPropertyHeader(const std::string& name) const;

    /// Invalid for an object's own compound.
    ICompoundProperty getParent() const;

protected:
    explicit ICompoundProperty(ErrorHandler::Policy policy)
        : IBasePropertyT<AbcA::CompoundPropertyReaderPtr>(policy)
    {
    }

    /// What schemas do when made: find the compound, or take one, and compare its metadata with their own.
    void open_schema(const ICompoundProperty& parent, const std::string& name, const SchemaDescription& schema,
                     SchemaInterpMatching matching);
    void wrap_schema(const ICompoundProperty& property, const SchemaDescription& schema, SchemaInterpMatching matching);

private:
    void init_from_object(const IObject& object);
};

inline AbcA::CompoundPropertyReaderPtr GetCompoundPropertyReaderPtr(ICompoundProperty& prp)
{
    return prp.getPtr();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
