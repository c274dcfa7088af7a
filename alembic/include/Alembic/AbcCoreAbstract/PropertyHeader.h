/// What is known of a property without reading a sample.
#pragma once

#include <Alembic/AbcCoreAbstract/DataType.h>
#include <Alembic/AbcCoreAbstract/Foundation.h>
#include <Alembic/AbcCoreAbstract/MetaData.h>
#include <Alembic/AbcCoreAbstract/TimeSampling.h>

#include <string>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

/// The numbers are those in stored property headers.
enum PropertyType {
    kCompoundProperty = 0, ///< holds other properties
    kScalarProperty = 1,   ///< one element per sample
    kArrayProperty = 2,    ///< any number of elements per sample
};

class PropertyHeader
{
public:
    /// A scalar without name and type.
    PropertyHeader() = default;
    /// A compound.
    explicit PropertyHeader(const std::string& name, const MetaData& metaData)
        : name_(name)
        , type_(kCompoundProperty)
        , meta_data_(metaData)
    {
    }
    /// Any property; a compound has a default data type and no time sampling.
    PropertyHeader(const std::string& name, PropertyType propType, const MetaData& metaData, const DataType& dataType,
                   const TimeSamplingPtr& tsamp)
        : name_(name)
        , type_(propType)
        , meta_data_(metaData)
        , data_type_(dataType)
        , time_sampling_(tsamp)
    {
    }

    const std::string& getName() const { return name_; }
    void setName(const std::string& name) { name_ = name; }

    PropertyType getPropertyType() const { return type_; }
    void setPropertyType(PropertyType ptyp) { type_ = ptyp; }

    bool isScalar() const { return type_ == kScalarProperty; }
    bool isArray() const { return type_ == kArrayProperty; }
    bool isCompound() const { return type_ == kCompoundProperty; }
    bool isSimple() const { return !isCompound(); }

    const MetaData& getMetaData() const { return meta_data_; }
    void setMetaData(const MetaData& metaData) { meta_data_ = metaData; }

    /// One element of a simple property.
    const DataType& getDataType() const { return data_type_; }
    void setDataType(const DataType& dataType) { data_type_ = dataType; }

    /// Null for a compound.
    TimeSamplingPtr getTimeSampling() const { return time_sampling_; }
    void setTimeSampling(const TimeSamplingPtr& tsamp) { time_sampling_ = tsamp; }

private:
    std::string name_;
    PropertyType type_ = kScalarProperty;
    MetaData meta_data_;
    DataType data_type_;
    TimeSamplingPtr time_sampling_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
