/// Compound properties being written.
#include <Alembic/Abc/OCompoundProperty.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

OCompoundProperty::OCompoundProperty(AbcA::CompoundPropertyWriterPtr parent, const std::string& name,
                                     const Argument& arg0, const Argument& arg1)
    : OCompoundProperty(GetErrorHandlerPolicyFromArgs(arg0, arg1))
{
    init_by_name(parent, name, arg0, arg1);
}

OCompoundProperty::OCompoundProperty(OCompoundProperty parent, const std::string& name, const Argument& arg0,
                                     const Argument& arg1)
    : OCompoundProperty(GetErrorHandlerPolicyFromArgs(arg0, arg1))
{
    init_by_name(parent.property_, name, arg0, arg1);
}

OCompoundProperty::OCompoundProperty(AbcA::CompoundPropertyWriterPtr ptr, const Argument& arg0, const Argument& arg1)
    : OCompoundProperty(std::move(ptr), kWrapExisting, arg0, arg1)
{
}

OCompoundProperty::OCompoundProperty(AbcA::CompoundPropertyWriterPtr ptr, WrapExistingFlag, const Argument& arg0,
                                     const Argument& arg1)
    : OBasePropertyT<AbcA::CompoundPropertyWriterPtr>(std::move(ptr), kWrapExisting,
                                                      GetErrorHandlerPolicyFromArgs(arg0, arg1))
{
}

OCompoundProperty::OCompoundProperty(OObject object, const Argument& arg0, const Argument& arg1)
    : OCompoundProperty(GetErrorHandlerPolicy(object, arg0, arg1))
{
    init_from_object(object);
}

OCompoundProperty::OCompoundProperty(OObject object, TopFlag, const Argument& arg0, const Argument& arg1)
    : OCompoundProperty(GetErrorHandlerPolicy(object, arg0, arg1))
{
    init_from_object(object);
}

void OCompoundProperty::init_by_name(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                                     const Argument& arg0, const Argument& arg1)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCompoundProperty::init()");
    if (!parent) ABCA_THROW("NULL parent passed into OCompoundProperty ctor for the property: " << name);
    if (const AbcA::PropertyHeader* header = parent->getPropertyHeader(name); header && header->isCompound()) {
        if (const AbcA::BasePropertyWriterPtr existing = parent->getProperty(name)) {
            property_ = existing->asCompoundPtr();
        }
    }
    if (!property_) property_ = parent->createCompoundProperty(name, GetMetaData(arg0, arg1));
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void OCompoundProperty::init_from_object(const OObject& object)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCompoundProperty::init( OObject )");
    const AbcA::ObjectWriterPtr writer = object.getPtr();
    if (!writer) ABCA_THROW("NULL object passed into OCompoundProperty ctor");
    property_ = writer->getProperties();
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void OCompoundProperty::create_schema(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                                      const SchemaDescription& schema, const Arguments& args)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OSchema::OSchema::init()");
    if (!parent) ABCA_THROW("NULL parent passed into OSchema ctor for the property: " << name);
    property_ = parent->createCompoundProperty(name, schema.compound_metadata(args.getMetaData(), args.isSparse()));
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

size_t OCompoundProperty::getNumProperties() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCompoundProperty::getNumProperties()");
    if (property_) return property_->getNumProperties();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

const AbcA::PropertyHeader& OCompoundProperty::getPropertyHeader(size_t i) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCompoundProperty::getPropertyHeader()");
    if (property_) return property_->getPropertyHeader(i);
    ALEMBIC_ABC_SAFE_CALL_END();
    static const AbcA::PropertyHeader empty_header;
    return empty_header;
}

const AbcA::PropertyHeader* OCompoundProperty::getPropertyHeader(const std::string& name) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCompoundProperty::getPropertyHeader()");
    if (property_) return property_->getPropertyHeader(name);
    ALEMBIC_ABC_SAFE_CALL_END();
    return nullptr;
}

OBaseProperty OCompoundProperty::getProperty(size_t i) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCompoundProperty::getProperty()");
    if (property_) return OBaseProperty(property_->getProperty(i), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return OBaseProperty();
}

OBaseProperty OCompoundProperty::getProperty(const std::string& name) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCompoundProperty::getProperty()");
    if (property_) return OBaseProperty(property_->getProperty(name), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return OBaseProperty();
}

OCompoundProperty OCompoundProperty::getParent() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCompoundProperty::getParent()");
    if (property_) return OCompoundProperty(property_->getParent(), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return OCompoundProperty();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
