/// What handles of properties that are being written have in common.
#pragma once

#include <Alembic/Abc/Argument.h>
#include <Alembic/Abc/Base.h>
#include <Alembic/Abc/Foundation.h>

#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class OObject;

/// `PROP_PTR` is the pointer to a property's writer. Copies share it. An invalid handle answers questions quietly with
/// empty values.
template <class PROP_PTR>
class ALEMBIC_EXPORT OBasePropertyT : public Base
{
public:
    typedef OBasePropertyT<PROP_PTR> this_type;
    typedef PROP_PTR prop_ptr_type;

    /// Invalid.
    OBasePropertyT() = default;
    OBasePropertyT(const OBasePropertyT&) = default;
    OBasePropertyT(OBasePropertyT&&) = default;
    OBasePropertyT& operator=(const OBasePropertyT&) = default;
    OBasePropertyT& operator=(OBasePropertyT&&) = default;
    virtual ~OBasePropertyT();

    /// Takes over a writer.
    OBasePropertyT(PROP_PTR property, WrapExistingFlag, ErrorHandler::Policy policy = ErrorHandler::kThrowPolicy)
        : Base(policy)
        , property_(std::move(property))
    {
    }

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
    OObject getObject() const;

    PROP_PTR getPtr() const { return property_; }
    /// Drops the writer and empties the log; the policy stays.
    virtual void reset();
    virtual bool valid() const;

    ALEMBIC_OPERATOR_BOOL(valid());

protected:
    explicit OBasePropertyT(ErrorHandler::Policy policy)
        : Base(policy)
    {
    }

    PROP_PTR property_;
};

extern template class OBasePropertyT<AbcA::BasePropertyWriterPtr>;
extern template class OBasePropertyT<AbcA::ScalarPropertyWriterPtr>;
extern template class OBasePropertyT<AbcA::ArrayPropertyWriterPtr>;
extern template class OBasePropertyT<AbcA::CompoundPropertyWriterPtr>;

/// A property of any kind.
typedef OBasePropertyT<AbcA::BasePropertyWriterPtr> OBaseProperty;

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic

#include <Alembic/Abc/OObject.h>
