/// Compound properties being read.
#include <Alembic/Abc/ICompoundProperty.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

ICompoundProperty::ICompoundProperty(const ICompoundProperty& parent, const std::string& name, const Argument& arg0)
    : ICompoundProperty(GetErrorHandlerPolicy(parent, arg0))
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICompoundProperty::init()");
    if (!parent.property_) ABCA_THROW("invalid parent");
    property_ = parent.property_->getCompoundProperty(name);
    if (!property_) ABCA_THROW("Nonexistent compound property: " << name);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

ICompoundProperty::ICompoundProperty(AbcA::CompoundPropertyReaderPtr ptr, const Argument& arg0, const Argument& arg1)
    : IBasePropertyT<AbcA::CompoundPropertyReaderPtr>(std::move(ptr), GetErrorHandlerPolicyFromArgs(arg0, arg1))
{
}

ICompoundProperty::ICompoundProperty(AbcA::CompoundPropertyReaderPtr ptr, WrapExistingFlag, const Argument& arg0,
                                     const Argument& arg1)
    : ICompoundProperty(std::move(ptr), arg0, arg1)
{
}

ICompoundProperty::ICompoundProperty(const IObject& object, const Argument& arg0, const Argument& arg1)
    : ICompoundProperty(GetErrorHandlerPolicy(object, arg0, arg1))
{
    init_from_object(object);
}

ICompoundProperty::ICompoundProperty(const IObject& object, TopFlag, const Argument& arg0, const Argument& arg1)
    : ICompoundProperty(object, arg0, arg1)
{
}

void ICompoundProperty::init_from_object(const IObject& object)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICompoundProperty::init( IObject )");
    if (object.m_object) property_ = object.m_object->getProperties();
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void ICompoundProperty::open_schema(const ICompoundProperty& parent, const std::string& name,
                                    const SchemaDescription& schema, SchemaInterpMatching matching)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ISchema::ISchema::init()");
    if (!parent.property_) ABCA_THROW("NULL parent passed into ISchema ctor");
    const AbcA::PropertyHeader* header = parent.property_->getPropertyHeader(name);
    if (!header) ABCA_THROW("Nonexistent compound property: " << name);
    if (!schema.matches_compound(header->getMetaData(), matching)) schema.throw_mismatch(header->getMetaData());
    property_ = parent.property_->getCompoundProperty(name);
    if (!property_) ABCA_THROW("Nonexistent compound property: " << name);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void ICompoundProperty::wrap_schema(const ICompoundProperty& property, const SchemaDescription& schema,
                                    SchemaInterpMatching matching)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ISchema::ISchema( wrap )");
    if (!property.property_) ABCA_THROW("NULL parent passed into ISchema ctor");
    const AbcA::MetaData& meta_data = property.property_->getMetaData();
    if (!schema.matches_compound(meta_data, matching)) schema.throw_mismatch(meta_data);
    property_ = property.property_;
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

size_t ICompoundProperty::getNumProperties() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICompoundProperty::getNumProperties()");
    if (property_) return property_->getNumProperties();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

const AbcA::PropertyHeader& ICompoundProperty::getPropertyHeader(size_t i) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICompoundProperty::getPropertyHeader()");
    if (property_) return property_->getPropertyHeader(i);
    ALEMBIC_ABC_SAFE_CALL_END();
    static const AbcA::PropertyHeader empty_header;
    return empty_header;
}

const AbcA::PropertyHeader* ICompoundProperty::getPropertyHeader(const std::string& name) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICompoundProperty::getPropertyHeader()");
    if (property_) return property_->getPropertyHeader(name);
    ALEMBIC_ABC_SAFE_CALL_END();
    return nullptr;
}

ICompoundProperty ICompoundProperty::getParent() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICompoundProperty::getParent()");
    if (property_) return ICompoundProperty(property_->getParent(), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
