/// Objects being read.
#include <Alembic/Abc/IObject.h>

#include <abc/instance_path.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

namespace {

const AbcA::ObjectHeader& empty_header()
{
    static const AbcA::ObjectHeader header;
    return header;
}

} // namespace

IObject::~IObject() = default;

IObject::IObject(AbcA::ObjectReaderPtr object, InstancePathPtr instance, ErrorHandler::Policy policy)
    : Base(policy)
    , m_object(std::move(object))
    , instance_(std::move(instance))
{
}

IObject::IObject(const IObject& parent, const std::string& name, const Argument& arg0)
    : Base(GetErrorHandlerPolicy(parent, arg0))
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::init()");
    if (parent.m_object) open_child(parent, name);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

IObject::IObject(AbcA::ObjectReaderPtr ptr, const Argument& arg0)
    : IObject(std::move(ptr), nullptr, GetErrorHandlerPolicyFromArgs(arg0))
{
}

IObject::IObject(AbcA::ObjectReaderPtr ptr, WrapExistingFlag, const Argument& arg0)
    : IObject(std::move(ptr), nullptr, GetErrorHandlerPolicyFromArgs(arg0))
{
}

IObject::IObject(IArchive& archive, const Argument& arg0)
    : Base(GetErrorHandlerPolicy(archive, arg0))
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::init( IArchive )");
    if (AbcA::ArchiveReaderPtr reader = archive.getPtr()) m_object = reader->getTop();
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

IObject::IObject(IArchive& archive, TopFlag, const Argument& arg0)
    : IObject(archive, arg0)
{
}

IObject IObject::handle_of_child(AbcA::ObjectReaderPtr child) const
{
    const ErrorHandler::Policy policy = getErrorHandlerPolicy();
    if (!child) return IObject(policy);
    const bool instance = is_instance(child->getMetaData());
    if (!instance && !instance_) return IObject(std::move(child), nullptr, policy);

    auto path = std::make_shared<InstancePath>();
    path->name = child->getName();
    path->full_name = child_full_name(getFullName(), path->name);
    path->parent = m_object;
    path->above = instance_;
    if (instance) {
        path->stored = std::move(child);
        child = follow_instance(*path->stored, path->source);
        path->source_full_name = child->getFullName();
        refuse_loop(path->source_full_name, path->full_name, m_object.get(), instance_.get());
    }
    return IObject(std::move(child), std::move(path), policy);
}

void IObject::open_child(const IObject& parent, const std::string& name)
{
    if (!parent.m_object) ABCA_THROW("Invalid parent given for the object " << name);
    IObject child = parent.handle_of_child(parent.m_object->getChild(name));
    m_object = std::move(child.m_object);
    instance_ = std::move(child.instance_);
}

const AbcA::ObjectHeader& IObject::getHeader() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::getHeader()");
    if (m_object) return m_object->getHeader();
    ALEMBIC_ABC_SAFE_CALL_END();
    return empty_header();
}

const std::string& IObject::getName() const
{
    return instance_ ? instance_->name : getHeader().getName();
}

const std::string& IObject::getFullName() const
{
    return instance_ ? instance_->full_name : getHeader().getFullName();
}

const AbcA::MetaData& IObject::getMetaData() const
{
    return getHeader().getMetaData();
}

IArchive IObject::getArchive() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::getArchive()");
    if (m_object) return IArchive(m_object->getArchive(), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return IArchive();
}

IObject IObject::getParent() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::getParent()");
    if (instance_) return IObject(instance_->parent, instance_->above, getErrorHandlerPolicy());
    if (m_object) return IObject(m_object->getParent(), nullptr, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return IObject(getErrorHandlerPolicy());
}

size_t IObject::getNumChildren() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::getNumChildren()");
    if (m_object) return m_object->getNumChildren();
    ALEMBIC_ABC_SAFE_CALL_END();
    return 0;
}

const AbcA::ObjectHeader& IObject::getChildHeader(size_t i) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::getChildHeader()");
    if (m_object) return m_object->getChildHeader(i);
    ALEMBIC_ABC_SAFE_CALL_END();
    return empty_header();
}

const AbcA::ObjectHeader* IObject::getChildHeader(const std::string& name) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::getChildHeader( name )");
    if (m_object) return m_object->getChildHeader(name);
    ALEMBIC_ABC_SAFE_CALL_END();
    return nullptr;
}

IObject IObject::getChild(size_t childIndex) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::getChild()");
    if (m_object) return handle_of_child(m_object->getChild(childIndex));
    ALEMBIC_ABC_SAFE_CALL_END();
    return IObject(getErrorHandlerPolicy());
}

IObject IObject::getChild(const std::string& childName) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::getChild()");
    if (m_object) return handle_of_child(m_object->getChild(childName));
    ALEMBIC_ABC_SAFE_CALL_END();
    return IObject(getErrorHandlerPolicy());
}

ICompoundProperty IObject::getProperties() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::getProperties()");
    if (m_object) return ICompoundProperty(m_object->getProperties(), kWrapExisting);
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

bool IObject::isInstanceRoot() const
{
    return instance_ && instance_->stored;
}

std::string IObject::instanceSourcePath() const
{
    return instance_ ? instance_->source : std::string();
}

bool IObject::isChildInstance(size_t childIndex) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::isChildInstanced(size_t iChildIndex)");
    if (m_object) return is_instance(m_object->getChildHeader(childIndex).getMetaData());
    ALEMBIC_ABC_SAFE_CALL_END();
    return false;
}

bool IObject::isChildInstance(const std::string& childName) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::isChildInstance(const std::string &iChildName)");
    const AbcA::ObjectHeader* header = m_object ? m_object->getChildHeader(childName) : nullptr;
    return header && is_instance(header->getMetaData());
    ALEMBIC_ABC_SAFE_CALL_END();
    return false;
}

AbcA::ObjectReaderPtr IObject::getInstancePtr() const
{
    return instance_ ? instance_->stored : AbcA::ObjectReaderPtr();
}

void IObject::reset()
{
    m_object.reset();
    instance_.reset();
    getErrorHandler().clear();
}

bool IObject::valid() const
{
    return getErrorHandler().valid() && m_object;
}

bool IObject::getPropertiesHash(Digest& digest)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::getPropertiesHash()");
    if (m_object) return m_object->getPropertiesHash(digest);
    ALEMBIC_ABC_SAFE_CALL_END();
    return false;
}

bool IObject::getChildrenHash(Digest& digest)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IObject::getChildrenHash()");
    if (m_object) return m_object->getChildrenHash(digest);
    ALEMBIC_ABC_SAFE_CALL_END();
    return false;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
