/// A property with any number of elements per sample, written.
#pragma once

#include <Alembic/AbcCoreAbstract/ArraySample.h>
#include <Alembic/AbcCoreAbstract/BasePropertyWriter.h>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ArrayPropertyWriter : public BasePropertyWriter
{
public:
    ~ArrayPropertyWriter() override;

    /// Appends a sample; throws when its data type is another.
    virtual void setSample(const ArraySample& sample) = 0;
    /// Appends the previous sample once more; throws when there is none.
    virtual void setFromPreviousSample() = 0;

    virtual size_t getNumSamples() = 0;

    /// The archive's time sampling that the samples refer to; may be changed until the property is finished.
    virtual void setTimeSamplingIndex(uint32_t index) = 0;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
