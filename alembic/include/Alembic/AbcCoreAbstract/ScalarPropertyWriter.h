/// A property with one element per sample, written.
#pragma once

#include <Alembic/AbcCoreAbstract/BasePropertyWriter.h>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ScalarPropertyWriter : public BasePropertyWriter
{
public:
    ~ScalarPropertyWriter() override;

    /// Appends a sample: extent values at `sample` (std::string objects for strings).
    virtual void setSample(const void* sample) = 0;
    /// Appends the previous sample once more; throws when there is none.
    virtual void setFromPreviousSample() = 0;

    virtual size_t getNumSamples() = 0;

    /// The archive's time sampling that the samples refer to; may be changed until the property is finished.
    virtual void setTimeSamplingIndex(uint32_t index) = 0;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
