/// What handles of properties that are being read have in common.
#pragma once

#include <Alembic/Abc/Argument.h>
#include <Alembic/Abc/Base.h>
#include <Alembic/Abc/Foundation.h>

#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class IObject;

/// `PROP_PTR` is the pointer to a scalar, array or compound property's reader. Copies share it. An invalid handle
/// answers quietly with empty values.
template <class PROP_PTR>
class ALEMBIC_EXPORT IBasePropertyT : public Base
{
public:
    typedef IBasePropertyT<PROP_PTR> this_type;
    typedef PROP_PTR prop_ptr_type;

    /// Invalid.
    IBasePropertyT() = default;
    IBasePropertyT(const IBasePropertyT&) = default;
    IBasePropertyT(IBasePropertyT&&) = default;
    IBasePropertyT& operator=(const IBasePropertyT&) = default;
    IBasePropertyT& operator=(IBasePropertyT&&) = default;
    virtual ~IBasePropertyT();

    const AbcA::PropertyHeader& getHeader() const;
    const std::string& getName() const { return getHeader().getName(); }
    AbcA::PropertyType getPropertyType() const { return getHeader().getPropertyType(); }
    bool isScalar() const { return getPropertyType() == AbcA::kScalarProperty; }
    bool isArray() const { return getPropertyType() == AbcA::kArrayProperty; }
    bool isCompound() const { return getPropertyType() == AbcA::kCompoundProperty; }
    bool isSimple() const { return !isCompound(); }
    const AbcA::MetaData& getMetaData() const { return getHeader().getMetaData(); }
    const AbcA::DataType& getDataType() const { return getHeader().getDataType(); }
    /// Null for a compound.
    AbcA::TimeSamplingPtr getTimeSampling() const { return getHeader().getTimeSampling(); }

    /// The object the property belongs to.
    IObject getObject() const;

    PROP_PTR getPtr() const { return property_; }
    /// Drops the reader and empties the log; the policy stays.
    virtual void reset();
    /// There is a reader and no error was logged.
    virtual bool valid() const;

    ALEMBIC_OPERATOR_BOOL(valid());

protected:
    explicit IBasePropertyT(ErrorHandler::Policy policy)
        : Base(policy)
    {
    }
    IBasePropertyT(PROP_PTR property, ErrorHandler::Policy policy)
        : Base(policy)
        , property_(std::move(property))
    {
    }

    PROP_PTR property_;
};

extern template class IBasePropertyT<AbcA::ScalarPropertyReaderPtr>;
extern template class IBasePropertyT<AbcA::ArrayPropertyReaderPtr>;
extern template class IBasePropertyT<AbcA::CompoundPropertyReaderPtr>;

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic

#include <Alembic/Abc/IObject.h>
