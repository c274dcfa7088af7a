/// Scalar properties being read.
#include <Alembic/Abc/IScalarProperty.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

IScalarProperty::IScalarProperty(const ICompoundProperty& parent, const std::string& name, const Argument& arg0)
    : IScalarProperty(GetErrorHandlerPolicy(parent, arg0))
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IScalarProperty::init()");
    const AbcA::CompoundPropertyReaderPtr compound = parent.getPtr();
    if (!compound) ABCA_THROW("invalid parent");
    property_ = compound->getScalarProperty(name);
    if (!property_) ABCA_THROW("Nonexistent scalar property: " << name);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

IScalarProperty::IScalarProperty(AbcA::ScalarPropertyReaderPtr ptr, const Argument& arg0)
    : IBasePropertyT<AbcA::ScalarPropertyReaderPtr>(std::move(ptr), GetErrorHandlerPolicyFromArgs(arg0))
{
}

IScalarProperty::IScalarProperty(AbcA::ScalarPropertyReaderPtr ptr, WrapExistingFlag, const Argument& arg0)
    : IScalarProperty(std::move(ptr), arg0)
{
}

void IScalarProperty::open_typed(const ICompoundProperty& parent, const std::string& name, const TypeDescription& type,
                                 SchemaInterpMatching matching)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ITypedScalarProperty::ITypedScalarProperty()");
    const AbcA::CompoundPropertyReaderPtr compound = parent.getPtr();
    if (!compound) ABCA_THROW("NULL CompoundPropertyReader passed into ITypedScalarProperty ctor");
    const AbcA::PropertyHeader* header = compound->getPropertyHeader(name);
    if (!header) ABCA_THROW("Nonexistent scalar property: " << name);
    if (!type.matches_scalar(*header, matching)) type.throw_mismatch(*header, AbcA::kScalarProperty);
    property_ = compound->getScalarProperty(name);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void IScalarProperty::wrap_typed(AbcA::ScalarPropertyReaderPtr property, const TypeDescription& type,
                                 SchemaInterpMatching matching)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ITypedScalarProperty::ITypedScalarProperty()");
    if (!property) ABCA_THROW("NULL ScalarPropertyReader passed into ITypedScalarProperty ctor");
    const AbcA::PropertyHeader& header = property->getHeader();
    if (!type.matches_scalar(header, matching)) type.throw_mismatch(header, AbcA::kScalarProperty);
    property_ = std::move(property);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

size_t IScalarProperty::getNumSamples() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IScalarProperty::getNumSamples()");
    if (property_) return property_->getNumSamples();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

bool IScalarProperty::isConstant() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IScalarProperty::isConstant()");
    return !property_ || property_->isConstant();
    ALEMBIC_ABC_SAFE_CALL_END();
    return true;
}

AbcA::TimeSamplingPtr IScalarProperty::getTimeSampling() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IScalarProperty::getTimeSampling()");
    if (property_) return property_->getTimeSampling();
    ALEMBIC_ABC_SAFE_CALL_END();
    return AbcA::TimeSamplingPtr();
}

void IScalarProperty::get(void* sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IScalarProperty::get()");
    if (property_) property_->getSample(selector.index_in(*property_), sample);
    ALEMBIC_ABC_SAFE_CALL_END();
}

ICompoundProperty IScalarProperty::getParent() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IScalarProperty::getParent()");
    if (property_) return ICompoundProperty(property_->getParent(), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
