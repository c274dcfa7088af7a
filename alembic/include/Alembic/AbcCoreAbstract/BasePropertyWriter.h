/// What all properties that are written have in common.
#pragma once

#include <Alembic/AbcCoreAbstract/ForwardDeclarations.h>
#include <Alembic/AbcCoreAbstract/Foundation.h>
#include <Alembic/AbcCoreAbstract/PropertyHeader.h>

#include <string>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT BasePropertyWriter : private Alembic::Util::noncopyable
{
public:
    virtual ~BasePropertyWriter();

    virtual const PropertyHeader& getHeader() const = 0;
    const std::string& getName() const { return getHeader().getName(); }
    PropertyType getPropertyType() const { return getHeader().getPropertyType(); }
    bool isScalar() const { return getHeader().isScalar(); }
    bool isArray() const { return getHeader().isArray(); }
    bool isCompound() const { return getHeader().isCompound(); }
    bool isSimple() const { return getHeader().isSimple(); }
    const MetaData& getMetaData() const { return getHeader().getMetaData(); }
    const DataType& getDataType() const { return getHeader().getDataType(); }
    TimeSamplingPtr getTimeSampling() const { return getHeader().getTimeSampling(); }

    virtual ObjectWriterPtr getObject() = 0;
    /// Null for an object's own compound.
    virtual CompoundPropertyWriterPtr getParent() = 0;

    /// Null unless the property is of that kind.
    virtual ScalarPropertyWriterPtr asScalarPtr();
    virtual ArrayPropertyWriterPtr asArrayPtr();
    virtual CompoundPropertyWriterPtr asCompoundPtr();

protected:
    BasePropertyWriter() = default;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
