/// A property that holds other properties, read.
#pragma once

#include <Alembic/AbcCoreAbstract/BasePropertyReader.h>

#include <string>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT CompoundPropertyReader : public BasePropertyReader
{
public:
    ~CompoundPropertyReader() override;

    virtual size_t getNumProperties() = 0;
    /// Throws when out of range.
    virtual const PropertyHeader& getPropertyHeader(size_t i) = 0;
    /// Null when there is no such property.
    virtual const PropertyHeader* getPropertyHeader(const std::string& name) = 0;

    /// By name: null when there is no such property, throws when it is of another kind. By index: throws when out of
    /// range.
    virtual ScalarPropertyReaderPtr getScalarProperty(const std::string& name) = 0;
    virtual ArrayPropertyReaderPtr getArrayProperty(const std::string& name) = 0;
    virtual CompoundPropertyReaderPtr getCompoundProperty(const std::string& name) = 0;
    ScalarPropertyReaderPtr getScalarProperty(size_t i);
    ArrayPropertyReaderPtr getArrayProperty(size_t i);
    CompoundPropertyReaderPtr getCompoundProperty(size_t i);

    /// The property, of whatever kind.
    BasePropertyReaderPtr getProperty(const std::string& name);
    BasePropertyReaderPtr getProperty(size_t i);
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
