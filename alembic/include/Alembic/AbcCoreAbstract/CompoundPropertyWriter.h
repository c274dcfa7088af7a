/// A property that holds other properties, written.
#pragma once

#include <Alembic/AbcCoreAbstract/BasePropertyWriter.h>

#include <string>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT CompoundPropertyWriter : public BasePropertyWriter
{
public:
    ~CompoundPropertyWriter() override;

    /// Properties created so far.
    virtual size_t getNumProperties() = 0;
    /// Throws when out of range.
    virtual const PropertyHeader& getPropertyHeader(size_t i) = 0;
    /// Null when there is no such property.
    virtual const PropertyHeader* getPropertyHeader(const std::string& name) = 0;

    /// Null when there is no such property, or its writer is gone. By index: throws when out of range.
    virtual BasePropertyWriterPtr getProperty(const std::string& name) = 0;
    BasePropertyWriterPtr getProperty(size_t i);

    /// Throw for a name that is taken, empty, or contains `/`, and for a data type that is unknown or of extent 0.
    virtual ScalarPropertyWriterPtr createScalarProperty(const std::string& name, const MetaData& metaData,
                                                         const DataType& dataType, uint32_t timeSamplingIndex) = 0;
    virtual ArrayPropertyWriterPtr createArrayProperty(const std::string& name, const MetaData& metaData,
                                                       const DataType& dataType, uint32_t timeSamplingIndex) = 0;
    virtual CompoundPropertyWriterPtr createCompoundProperty(const std::string& name, const MetaData& metaData) = 0;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
