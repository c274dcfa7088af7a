/// A handle of a scalar property that is being written.
#pragma once

#include <Alembic/Abc/OBaseProperty.h>
#include <Alembic/Abc/OCompoundProperty.h>
#include <Alembic/Abc/TypeDescription.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT OScalarProperty : public OBasePropertyT<AbcA::ScalarPropertyWriterPtr>
{
public:
    typedef OScalarProperty this_type;

    /// Invalid.
    OScalarProperty() = default;

    /// Creates the property, with the parent's policy or an argument's. Time sampling and metadata may be arguments; a
    /// TimeSamplingPtr is added to the archive.
    OScalarProperty(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const AbcA::DataType& dataType,
                    const Argument& arg0 = Argument(), const Argument& arg1 = Argument(),
                    const Argument& arg2 = Argument(), const Argument& arg3 = Argument());
    OScalarProperty(OCompoundProperty parent, const std::string& name, const AbcA::DataType& dataType,
                    const Argument& arg0 = Argument(), const Argument& arg1 = Argument(),
                    const Argument& arg2 = Argument());

    /// Takes over a writer.
    OScalarProperty(AbcA::ScalarPropertyWriterPtr ptr, ErrorHandler::Policy policy = ErrorHandler::kThrowPolicy);
    OScalarProperty(AbcA::ScalarPropertyWriterPtr ptr, WrapExistingFlag wrapFlag,
                    ErrorHandler::Policy policy = ErrorHandler::kThrowPolicy);

    size_t getNumSamples() const;
    /// Appends a sample: one element, copied at once.
    void set(const void* sample);
    /// Appends the last sample again; an error when there is none.
    void setFromPrevious();

    /// Which sampling the samples refer to, at any time before the property is finished. A pointer is added to the
    /// archive; null changes nothing.
    void setTimeSampling(uint32_t index);
    void setTimeSampling(AbcA::TimeSamplingPtr time);

    OCompoundProperty getParent() const;

protected:
    /// Chooses the constructor for derived classes: an invalid handle of a policy.
    enum TypedFlag { TYPED };
    OScalarProperty(TypedFlag, ErrorHandler::Policy policy)
        : OBasePropertyT<AbcA::ScalarPropertyWriterPtr>(policy)
    {
    }

    /// What typed properties do when made: create the property, or take a writer that must have their type.
    void create_typed(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                      const TypeDescription& type, const Arguments& args);
    void wrap_typed(AbcA::ScalarPropertyWriterPtr property, const TypeDescription& type, SchemaInterpMatching matching);

private:
    void init(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name, const AbcA::DataType& data_type,
              const Arguments& args);
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
