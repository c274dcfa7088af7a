/// Scalar properties being written.
#include <Alembic/Abc/OScalarProperty.h>

#include <abc/property_creation.h>
#include <abc/written_property.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

OScalarProperty::OScalarProperty(AbcA::CompoundPropertyWriterPtr parent, const std::string& name,
                                 const AbcA::DataType& dataType, const Argument& arg0, const Argument& arg1,
                                 const Argument& arg2, const Argument& arg3)
    : OScalarProperty(TYPED, GetErrorHandlerPolicyFromArgs(arg0, arg1, arg2, arg3))
{
    init(parent, name, dataType, collect_arguments(arg0, arg1, arg2, arg3));
}

OScalarProperty::OScalarProperty(OCompoundProperty parent, const std::string& name, const AbcA::DataType& dataType,
                                 const Argument& arg0, const Argument& arg1, const Argument& arg2)
    : OScalarProperty(TYPED, GetErrorHandlerPolicy(parent, arg0, arg1, arg2))
{
    init(parent.getPtr(), name, dataType, collect_arguments(arg0, arg1, arg2));
}

OScalarProperty::OScalarProperty(AbcA::ScalarPropertyWriterPtr ptr, ErrorHandler::Policy policy)
    : OScalarProperty(std::move(ptr), kWrapExisting, policy)
{
}

OScalarProperty::OScalarProperty(AbcA::ScalarPropertyWriterPtr ptr, WrapExistingFlag, ErrorHandler::Policy policy)
    : OBasePropertyT<AbcA::ScalarPropertyWriterPtr>(std::move(ptr), kWrapExisting, policy)
{
}

void OScalarProperty::init(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                           const AbcA::DataType& data_type, const Arguments& args)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OScalarProperty::init(p, n)");
    if (!parent) ABCA_THROW("NULL parent passed into OScalarProperty ctor for the property: " << name);
    property_ = parent->createScalarProperty(name, args.getMetaData(), data_type, time_sampling_index(*parent, args));
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void OScalarProperty::create_typed(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                                   const TypeDescription& type, const Arguments& args)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OTypedScalarProperty::init()");
    if (!parent) ABCA_THROW("NULL parent passed into OTypedScalarProperty ctor for the property: " << name);
    property_ = parent->createScalarProperty(name, typed_metadata(type, args), type.data_type,
                                             time_sampling_index(*parent, args));
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void OScalarProperty::wrap_typed(AbcA::ScalarPropertyWriterPtr property, const TypeDescription& type,
                                 SchemaInterpMatching matching)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OTypedScalarProperty::OTypedScalarProperty()");
    if (!property) ABCA_THROW("NULL ScalarPropertyWriter passed into OTypedScalarProperty ctor");
    const AbcA::PropertyHeader& header = property->getHeader();
    if (!type.matches_scalar(header, matching)) type.throw_mismatch(header, AbcA::kScalarProperty);
    property_ = std::move(property);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

size_t OScalarProperty::getNumSamples() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OScalarProperty::getNumSamples()");
    if (property_) return property_->getNumSamples();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

void OScalarProperty::set(const void* sample)
{
    with_writer(getErrorHandler(), property_, "OScalarProperty::set()",
                [&](AbcA::ScalarPropertyWriter& writer) { writer.setSample(sample); });
}

void OScalarProperty::setFromPrevious()
{
    with_writer(getErrorHandler(), property_, "OScalarProperty::setFromPrevious()",
                [&](AbcA::ScalarPropertyWriter& writer) { writer.setFromPreviousSample(); });
}

void OScalarProperty::setTimeSampling(uint32_t index)
{
    with_writer(getErrorHandler(), property_, "OScalarProperty::setTimeSampling( uint32_t )",
                [&](AbcA::ScalarPropertyWriter& writer) { writer.setTimeSamplingIndex(index); });
}

void OScalarProperty::setTimeSampling(AbcA::TimeSamplingPtr time)
{
    with_writer(getErrorHandler(), property_, "OScalarProperty::setTimeSampling( TimeSamplingPtr )",
                [&](AbcA::ScalarPropertyWriter& writer) { change_time_sampling(writer, time); });
}

OCompoundProperty OScalarProperty::getParent() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OScalarProperty::getParent()");
    if (property_) return OCompoundProperty(property_->getParent(), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return OCompoundProperty();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
