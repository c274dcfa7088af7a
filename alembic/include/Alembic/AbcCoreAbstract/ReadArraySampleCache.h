/// A cache of array samples that a client may give to an archive.
#pragma once

#include <Alembic/AbcCoreAbstract/ArraySample.h>
#include <Alembic/AbcCoreAbstract/ForwardDeclarations.h>
#include <Alembic/AbcCoreAbstract/Foundation.h>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

/// A sample with its key; testable, true when the sample is there.
class ReadArraySampleID
{
public:
    typedef ReadArraySampleID this_type;

    ReadArraySampleID() = default;
    ReadArraySampleID(const ArraySample::Key& sampleKey, ArraySamplePtr sample)
        : key_(sampleKey)
        , sample_(sample)
    {
    }

    const ArraySample::Key& getKey() const { return key_; }
    ArraySamplePtr getSample() const { return sample_; }

    bool valid() const { return sample_ != nullptr; }
    ALEMBIC_OPERATOR_BOOL(valid())

private:
    ArraySample::Key key_;
    ArraySamplePtr sample_;
};

/// What a client's own cache derives from.
class ALEMBIC_EXPORT ReadArraySampleCache : private Alembic::Util::noncopyable
{
public:
    virtual ~ReadArraySampleCache();

    /// The sample with this key, or an invalid result.
    virtual ReadArraySampleID find(const ArraySample::Key& key) = 0;
    /// Keeps the sample; gives what the cache now holds for the key.
    virtual ReadArraySampleID store(const ArraySample::Key& key, ArraySamplePtr sample) = 0;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
