/// Array properties being read.
#include <Alembic/Abc/IArrayProperty.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

IArrayProperty::IArrayProperty(const ICompoundProperty& parent, const std::string& name, const Argument& arg0,
                               const Argument& arg1)
    : IArrayProperty(GetErrorHandlerPolicy(parent, arg0, arg1))
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::init()");
    const AbcA::CompoundPropertyReaderPtr compound = parent.getPtr();
    if (!compound) ABCA_THROW("invalid parent");
    property_ = compound->getArrayProperty(name);
    if (!property_) ABCA_THROW("Nonexistent array property: " << name);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

IArrayProperty::IArrayProperty(AbcA::ArrayPropertyReaderPtr ptr, const Argument& arg0)
    : IBasePropertyT<AbcA::ArrayPropertyReaderPtr>(std::move(ptr), GetErrorHandlerPolicyFromArgs(arg0))
{
}

IArrayProperty::IArrayProperty(AbcA::ArrayPropertyReaderPtr ptr, WrapExistingFlag, const Argument& arg0)
    : IArrayProperty(std::move(ptr), arg0)
{
}

void IArrayProperty::open_typed(const ICompoundProperty& parent, const std::string& name, const TypeDescription& type,
                                SchemaInterpMatching matching)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ITypedArrayProperty::ITypedArrayProperty()");
    const AbcA::CompoundPropertyReaderPtr compound = parent.getPtr();
    if (!compound) ABCA_THROW("NULL CompoundPropertyReader passed into ITypedArrayProperty ctor");
    const AbcA::PropertyHeader* header = compound->getPropertyHeader(name);
    if (!header) ABCA_THROW("Nonexistent array property: " << name);
    if (!type.matches_array(*header, matching)) type.throw_mismatch(*header, AbcA::kArrayProperty);
    property_ = compound->getArrayProperty(name);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void IArrayProperty::wrap_typed(AbcA::ArrayPropertyReaderPtr property, const TypeDescription& type,
                                SchemaInterpMatching matching)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ITypedArrayProperty::ITypedArrayProperty()");
    if (!property) ABCA_THROW("NULL ArrayPropertyReader passed into ITypedArrayProperty ctor");
    const AbcA::PropertyHeader& header = property->getHeader();
    if (!type.matches_array(header, matching)) type.throw_mismatch(header, AbcA::kArrayProperty);
    property_ = std::move(property);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

size_t IArrayProperty::getNumSamples() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::getNumSamples()");
    if (property_) return property_->getNumSamples();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

bool IArrayProperty::isConstant() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::isConstant()");
    return !property_ || property_->isConstant();
    ALEMBIC_ABC_SAFE_CALL_END();
    return true;
}

AbcA::TimeSamplingPtr IArrayProperty::getTimeSampling() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::getTimeSampling()");
    if (property_) return property_->getTimeSampling();
    ALEMBIC_ABC_SAFE_CALL_END();
    return AbcA::TimeSamplingPtr();
}

bool IArrayProperty::isScalarLike() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::isScalarLike()");
    if (property_) return property_->isScalarLike();
    ALEMBIC_ABC_SAFE_CALL_END();
    return false;
}

void IArrayProperty::get(AbcA::ArraySamplePtr& sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::get()");
    if (property_) property_->getSample(selector.index_in(*property_), sample);
    ALEMBIC_ABC_SAFE_CALL_END();
}

void IArrayProperty::getAs(void* sample, PlainOldDataType pod, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::getAs(PlainOldDataType)");
    if (property_) property_->getAs(selector.index_in(*property_), sample, pod);
    ALEMBIC_ABC_SAFE_CALL_END();
}

void IArrayProperty::getAs(void* sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::getAs()");
    if (property_) property_->getAs(selector.index_in(*property_), sample, property_->getDataType().getPod());
    ALEMBIC_ABC_SAFE_CALL_END();
}

bool IArrayProperty::getPart(void* sample, uint64_t first, size_t count, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::getPart()");
    if (property_) return property_->getPart(selector.index_in(*property_), first, count, sample);
    ALEMBIC_ABC_SAFE_CALL_END();
    return false;
}

bool IArrayProperty::getKey(AbcA::ArraySampleKey& key, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::getKey()");
    if (property_ && property_->getNumSamples() != 0) return property_->getKey(selector.index_in(*property_), key);
    ALEMBIC_ABC_SAFE_CALL_END();
    return false;
}

void IArrayProperty::getDimensions(Dimensions& dim, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::getDimensions()");
    if (property_) property_->getDimensions(selector.index_in(*property_), dim);
    ALEMBIC_ABC_SAFE_CALL_END();
}

ICompoundProperty IArrayProperty::getParent() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IArrayProperty::getParent()");
    if (property_) return ICompoundProperty(property_->getParent(), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
