/// A handle of a scalar property that is being read: one element a sample.
#pragma once

#include <Alembic/Abc/IBaseProperty.h>
#include <Alembic/Abc/ICompoundProperty.h>
#include <Alembic/Abc/ISampleSelector.h>
#include <Alembic/Abc/TypeDescription.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT IScalarProperty : public IBasePropertyT<AbcA::ScalarPropertyReaderPtr>
{
public:
    typedef IScalarProperty this_type;

    /// Invalid.
    IScalarProperty() = default;

    /// The scalar property of that name. Error: `Nonexistent scalar property: NAME`.
    IScalarProperty(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument());

    /// Takes over a reader.
    IScalarProperty(AbcA::ScalarPropertyReaderPtr ptr, const Argument& arg0 = Argument());
    IScalarProperty(AbcA::ScalarPropertyReaderPtr ptr, WrapExistingFlag wrapFlag, const Argument& arg0 = Argument());

    size_t getNumSamples() const;
    /// No sample differs from another; so also with none or one.
    bool isConstant() const;
    AbcA::TimeSamplingPtr getTimeSampling() const;

    /// Writes one element into the caller's memory, which must hold `getDataType().getNumBytes()` bytes, or
    /// constructed strings. Untouched on an error.
    void get(void* sample, const ISampleSelector& selector = ISampleSelector()) const;

    ICompoundProperty getParent() const;

protected:
    explicit IScalarProperty(ErrorHandler::Policy policy)
        : IBasePropertyT<AbcA::ScalarPropertyReaderPtr>(policy)
    {
    }

    /// What typed properties do when made: find the reader, or take one, and compare its header with their type.
    void open_typed(const ICompoundProperty& parent, const std::string& name, const TypeDescription& type,
                    SchemaInterpMatching matching);
    void wrap_typed(AbcA::ScalarPropertyReaderPtr property, const TypeDescription& type, SchemaInterpMatching matching);
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
