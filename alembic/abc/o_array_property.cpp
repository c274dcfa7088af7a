/// Array properties being written.
#include <Alembic/Abc/OArrayProperty.h>

#include <abc/property_creation.h>
#include <abc/written_property.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

OArrayProperty::OArrayProperty(AbcA::CompoundPropertyWriterPtr parent, const std::string& name,
                               const AbcA::DataType& dataType, const Argument& arg0, const Argument& arg1,
                               const Argument& arg2, const Argument& arg3)
    : OArrayProperty(TYPED, GetErrorHandlerPolicyFromArgs(arg0, arg1, arg2, arg3))
{
    init(parent, name, dataType, collect_arguments(arg0, arg1, arg2, arg3));
}

OArrayProperty::OArrayProperty(OCompoundProperty parent, const std::string& name, const AbcA::DataType& dataType,
                               const Argument& arg0, const Argument& arg1, const Argument& arg2)
    : OArrayProperty(TYPED, GetErrorHandlerPolicy(parent, arg0, arg1, arg2))
{
    init(parent.getPtr(), name, dataType, collect_arguments(arg0, arg1, arg2));
}

OArrayProperty::OArrayProperty(AbcA::ArrayPropertyWriterPtr ptr, const Argument& arg0)
    : OArrayProperty(std::move(ptr), kWrapExisting, arg0)
{
}

OArrayProperty::OArrayProperty(AbcA::ArrayPropertyWriterPtr ptr, WrapExistingFlag, const Argument& arg0)
    : OBasePropertyT<AbcA::ArrayPropertyWriterPtr>(std::move(ptr), kWrapExisting, GetErrorHandlerPolicyFromArgs(arg0))
{
}

void OArrayProperty::init(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                          const AbcA::DataType& data_type, const Arguments& args)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OArrayProperty::init()");
    if (!parent) ABCA_THROW("NULL parent passed into OArrayProperty ctor for the property: " << name);
    property_ = parent->createArrayProperty(name, args.getMetaData(), data_type, time_sampling_index(*parent, args));
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void OArrayProperty::create_typed(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                                  const TypeDescription& type, const Arguments& args)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OTypedArrayProperty::init()");
    if (!parent) ABCA_THROW("NULL parent passed into OTypedArrayProperty ctor for the property: " << name);
    property_ = parent->createArrayProperty(name, typed_metadata(type, args), type.data_type,
                                            time_sampling_index(*parent, args));
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void OArrayProperty::wrap_typed(AbcA::ArrayPropertyWriterPtr property, const TypeDescription& type,
                                SchemaInterpMatching matching)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OTypedArrayProperty::OTypedArrayProperty()");
    if (!property) ABCA_THROW("NULL ArrayPropertyWriter passed into OTypedArrayProperty ctor");
    const AbcA::PropertyHeader& header = property->getHeader();
    if (!type.matches_array(header, matching)) type.throw_mismatch(header, AbcA::kArrayProperty);
    property_ = std::move(property);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

size_t OArrayProperty::getNumSamples() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OArrayProperty::getNumSamples()");
    if (property_) return property_->getNumSamples();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

void OArrayProperty::set(const AbcA::ArraySample& sample)
{
    with_writer(getErrorHandler(), property_, "OArrayProperty::set()",
                [&](AbcA::ArrayPropertyWriter& writer) { writer.setSample(sample); });
}

void OArrayProperty::setFromPrevious()
{
    with_writer(getErrorHandler(), property_, "OArrayProperty::setFromPrevious()",
                [&](AbcA::ArrayPropertyWriter& writer) { writer.setFromPreviousSample(); });
}

void OArrayProperty::setTimeSampling(uint32_t index)
{
    with_writer(getErrorHandler(), property_, "OArrayProperty::setTimeSampling( uint32_t )",
                [&](AbcA::ArrayPropertyWriter& writer) { writer.setTimeSamplingIndex(index); });
}

void OArrayProperty::setTimeSampling(AbcA::TimeSamplingPtr time)
{
    with_writer(getErrorHandler(), property_, "OArrayProperty::setTimeSampling( TimeSamplingPtr )",
                [&](AbcA::ArrayPropertyWriter& writer) { change_time_sampling(writer, time); });
}

OCompoundProperty OArrayProperty::getParent() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OArrayProperty::getParent()");
    if (property_) return OCompoundProperty(property_->getParent(), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return OCompoundProperty();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
