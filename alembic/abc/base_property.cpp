/// What all property handles share.
#include <Alembic/Abc/IBaseProperty.h>
#include <Alembic/Abc/OBaseProperty.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

namespace {

const AbcA::PropertyHeader& empty_header()
{
    static const AbcA::PropertyHeader header;
    return header;
}

} // namespace

template <class PROP_PTR>
IBasePropertyT<PROP_PTR>::~IBasePropertyT() = default;

template <class PROP_PTR>
const AbcA::PropertyHeader& IBasePropertyT<PROP_PTR>::getHeader() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IBasePropertyT::getHeader()");
    if (property_) return property_->getHeader();
    ALEMBIC_ABC_SAFE_CALL_END();
    return empty_header();
}

template <class PROP_PTR>
IObject IBasePropertyT<PROP_PTR>::getObject() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IBasePropertyT::getObject()");
    if (property_) return IObject(property_->getObject(), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return IObject();
}

template <class PROP_PTR>
void IBasePropertyT<PROP_PTR>::reset()
{
    property_.reset();
    getErrorHandler().clear();
}

template <class PROP_PTR>
bool IBasePropertyT<PROP_PTR>::valid() const
{
    return getErrorHandler().valid() && property_;
}

template class IBasePropertyT<AbcA::ScalarPropertyReaderPtr>;
template class IBasePropertyT<AbcA::ArrayPropertyReaderPtr>;
template class IBasePropertyT<AbcA::CompoundPropertyReaderPtr>;

template <class PROP_PTR>
OBasePropertyT<PROP_PTR>::~OBasePropertyT() = default;

template <class PROP_PTR>
const AbcA::PropertyHeader& OBasePropertyT<PROP_PTR>::getHeader() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OBaseProperty::getHeader()");
    if (property_) return property_->getHeader();
    ALEMBIC_ABC_SAFE_CALL_END();
    return empty_header();
}

template <class PROP_PTR>
OObject OBasePropertyT<PROP_PTR>::getObject() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OBaseProperty::getObject()");
    if (property_) return OObject(property_->getObject(), kWrapExisting, getErrorHandlerPolicy());
    ALEMBIC_ABC_SAFE_CALL_END();
    return OObject();
}

template <class PROP_PTR>
void OBasePropertyT<PROP_PTR>::reset()
{
    property_.reset();
    getErrorHandler().clear();
}

template <class PROP_PTR>
bool OBasePropertyT<PROP_PTR>::valid() const
{
    return getErrorHandler().valid() && property_;
}

template class OBasePropertyT<AbcA::BasePropertyWriterPtr>;
template class OBasePropertyT<AbcA::ScalarPropertyWriterPtr>;
template class OBasePropertyT<AbcA::ArrayPropertyWriterPtr>;
template class OBasePropertyT<AbcA::CompoundPropertyWriterPtr>;

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
