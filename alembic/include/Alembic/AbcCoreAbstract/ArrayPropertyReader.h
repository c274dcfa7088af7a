/// A property with any number of elements per sample, read.
#pragma once

#include <Alembic/AbcCoreAbstract/ArraySample.h>
#include <Alembic/AbcCoreAbstract/ArraySampleKey.h>
#include <Alembic/AbcCoreAbstract/BasePropertyReader.h>

#include <utility>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ArrayPropertyReader : public BasePropertyReader
{
public:
    ~ArrayPropertyReader() override;

    /// Samples that were set, repeated ones included.
    virtual size_t getNumSamples() = 0;
    /// No sample differs from the first; true for 0 and 1 samples.
    virtual bool isConstant() = 0;

    /// Gives a sample that owns its data. Throws for a bad index.
    virtual void getSample(index_t sampleIndex, ArraySamplePtr& sample) = 0;

    /// TimeSampling's look-ups with the property's own sampling and number of samples.
    virtual std::pair<index_t, chrono_t> getFloorIndex(chrono_t time) = 0;
    virtual std::pair<index_t, chrono_t> getCeilIndex(chrono_t time) = 0;
    virtual std::pair<index_t, chrono_t> getNearIndex(chrono_t time) = 0;

    /// Key of the sample's contents, without reading them; false when nothing is stored for the index.
    virtual bool getKey(index_t sampleIndex, ArraySampleKey& key) = 0;
    /// Shape of the sample, counted in elements of the data type, without reading it.
    virtual void getDimensions(index_t sampleIndex, Dimensions& dim) = 0;
    /// Every sample has exactly one element.
    virtual bool isScalarLike() = 0;

    /// Reads into the caller's memory, which holds number of elements * extent values of type `pod`. Numbers convert
    /// like a cast, clamped to the target's limits; throws for a conversion to or from strings.
    virtual void getAs(index_t sample, void* intoLocation, PlainOldDataType pod) = 0;

    /// This library's own addition, announced by ALEMBIC_HAS_PARTIAL_READS: reads `count` elements from element `first`
    /// on into the caller's memory, as stored. False, nothing read, where the back end cannot read a part for less than
    /// the whole (the default), and for texts. Throws for a bad index and for elements beyond the sample's.
    virtual bool getPart(index_t sampleIndex, uint64_t first, size_t count, void* intoLocation);
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
