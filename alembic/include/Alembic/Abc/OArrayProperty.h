/// A handle of an array property that is being written.
#pragma once

#include <Alembic/Abc/OBaseProperty.h>
#include <Alembic/Abc/OCompoundProperty.h>
#include <Alembic/Abc/TypeDescription.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT OArrayProperty : public OBasePropertyT<AbcA::ArrayPropertyWriterPtr>
{
public:
    typedef OArrayProperty this_type;

    /// Invalid.
    OArrayProperty() = default;

    /// Creates the property, with the parent's policy or an argument's. Time sampling and metadata may be arguments; a
    /// TimeSamplingPtr is added to the archive.
    OArrayProperty(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const AbcA::DataType& dataType,
                   const Argument& arg0 = Argument(), const Argument& arg1 = Argument(),
                   const Argument& arg2 = Argument(), const Argument& arg3 = Argument());
    OArrayProperty(OCompoundProperty parent, const std::string& name, const AbcA::DataType& dataType,
                   const Argument& arg0 = Argument(), const Argument& arg1 = Argument(),
                   const Argument& arg2 = Argument());

    /// Takes over a writer.
    OArrayProperty(AbcA::ArrayPropertyWriterPtr ptr, const Argument& arg0 = Argument());
    OArrayProperty(AbcA::ArrayPropertyWriterPtr ptr, WrapExistingFlag wrapFlag, const Argument& arg0 = Argument());

    size_t getNumSamples() const;
    /// Appends a sample, written or copied at once. Its data type must be the property's.
    void set(const AbcA::ArraySample& sample);
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
    OArrayProperty(TypedFlag, ErrorHandler::Policy policy)
        : OBasePropertyT<AbcA::ArrayPropertyWriterPtr>(policy)
    {
    }

    /// What typed properties do when made: create the property, or take a writer that must have their type.
    void create_typed(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                      const TypeDescription& type, const Arguments& args);
    void wrap_typed(AbcA::ArrayPropertyWriterPtr property, const TypeDescription& type, SchemaInterpMatching matching);

private:
    void init(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name, const AbcA::DataType& data_type,
              const Arguments& args);
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
