/// A property with one element per sample, read.
#pragma once

#include <Alembic/AbcCoreAbstract/BasePropertyReader.h>

#include <utility>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ScalarPropertyReader : public BasePropertyReader
{
public:
    ~ScalarPropertyReader() override;

    /// Samples that were set, repeated ones included.
    virtual size_t getNumSamples() = 0;
    /// No sample differs from the first; true for 0 and 1 samples.
    virtual bool isConstant() = 0;

    /// Copies the sample to `intoLocation`: extent values (std::string objects for strings). Throws for a bad index.
    virtual void getSample(index_t sample, void* intoLocation) = 0;

    /// TimeSampling's look-ups with the property's own sampling and number of samples.
    virtual std::pair<index_t, chrono_t> getFloorIndex(chrono_t time) = 0;
    virtual std::pair<index_t, chrono_t> getCeilIndex(chrono_t time) = 0;
    virtual std::pair<index_t, chrono_t> getNearIndex(chrono_t time) = 0;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
