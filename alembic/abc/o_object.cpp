/// Objects being written.
#include <Alembic/Abc/OObject.h>

#include <abc/instance_path.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

OObject::~OObject() = default;

OObject::OObject(OObject parentObject, const std::string& name, const Argument& arg0, const Argument& arg1,
                 const Argument& arg2)
    : Base(GetErrorHandlerPolicy(parentObject, arg0, arg1, arg2))
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::init()");
    create_child(parentObject, name, GetMetaData(arg0, arg1, arg2), "OObject");
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

OObject::OObject(AbcA::ObjectWriterPtr ptr, const Argument& arg0, const Argument& arg1, const Argument& arg2)
    : Base(GetErrorHandlerPolicyFromArgs(arg0, arg1, arg2))
    , object_(std::move(ptr))
{
}

OObject::OObject(AbcA::ObjectWriterPtr ptr, WrapExistingFlag, const Argument& arg0, const Argument& arg1,
                 const Argument& arg2)
    : OObject(std::move(ptr), arg0, arg1, arg2)
{
}

OObject::OObject(OArchive& archive, const Argument& arg0, const Argument& arg1, const Argument& arg2)
    : Base(GetErrorHandlerPolicyFromArgs(arg0, arg1, arg2))
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::init( OArchive )");
    const AbcA::ArchiveWriterPtr writer = archive.getPtr();
    if (!writer) ABCA_THROW("The archive is not open for writing");
    object_ = writer->getTop();
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

OObject::OObject(OArchive& archive, TopFlag, const Argument& arg0, const Argument& arg1, const Argument& arg2)
    : OObject(archive, arg0, arg1, arg2)
{
}

void OObject::create_child(const OObject& parent, const std::string& name, const AbcA::MetaData& meta_data,
                           const char* caller)
{
    if (!parent.object_) ABCA_THROW("NULL parent passed into " << caller << " ctor for the object: " << name);
    object_ = parent.object_->createChild(AbcA::ObjectHeader(name, meta_data));
}

const AbcA::ObjectHeader& OObject::getHeader() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::getHeader()");
    if (object_) return object_->getHeader();
    ALEMBIC_ABC_SAFE_CALL_END();
    static const AbcA::ObjectHeader empty_header;
    return empty_header;
}

OArchive OObject::getArchive() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::getArchive()");
    if (object_) return OArchive(object_->getArchive(), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return OArchive();
}

OObject OObject::getParent() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::getParent()");
    if (object_) return OObject(object_->getParent(), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return OObject(getErrorHandlerPolicy());
}

size_t OObject::getNumChildren() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::getNumChildren()");
    if (object_) return object_->getNumChildren();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

const AbcA::ObjectHeader& OObject::getChildHeader(size_t i) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::getChildHeader()");
    if (object_) return object_->getChildHeader(i);
    ALEMBIC_ABC_SAFE_CALL_END();
    static const AbcA::ObjectHeader empty_header;
    return empty_header;
}

const AbcA::ObjectHeader* OObject::getChildHeader(const std::string& name) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::getChildHeader()");
    if (object_) return object_->getChildHeader(name);
    ALEMBIC_ABC_SAFE_CALL_END();
    return nullptr;
}

OObject OObject::getChild(size_t childIndex) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::getChild()");
    if (object_) return OObject(object_->getChild(childIndex), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return OObject(getErrorHandlerPolicy());
}

OObject OObject::getChild(const std::string& childName) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::getChild()");
    if (object_) return OObject(object_->getChild(childName), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return OObject(getErrorHandlerPolicy());
}

OCompoundProperty OObject::getProperties() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::getProperties()");
    if (object_) return OCompoundProperty(object_->getProperties(), kWrapExisting);
    ALEMBIC_ABC_SAFE_CALL_END();
    return OCompoundProperty();
}

bool OObject::addChildInstance(OObject target, const std::string& name)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OObject::addChildInstance()");
    if (!object_ || !target.object_ || name.empty()) return false;
    if (object_->getArchive() != target.object_->getArchive()) return false;
    if (is_instance(target.getMetaData()) || is_same_or_above(target.getFullName(), getFullName())) return false;

    AbcA::MetaData meta_data;
    meta_data.set("isInstance", "1");
    const AbcA::ObjectWriterPtr instance = object_->createChild(AbcA::ObjectHeader(name, meta_data));
    const AbcA::ScalarPropertyWriterPtr source = instance->getProperties()->createScalarProperty(
        ".instanceSource", AbcA::MetaData(), AbcA::DataType(kStringPOD, 1), 0);
    source->setSample(&target.getFullName());
    return true;
    ALEMBIC_ABC_SAFE_CALL_END();
    return false;
}

void OObject::reset()
{
    object_.reset();
    getErrorHandler().clear();
}

bool OObject::valid() const
{
    return getErrorHandler().valid() && object_;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
