/// What identifies the contents of an array sample without looking at them.
#pragma once

#include <Alembic/AbcCoreAbstract/Foundation.h>

#include <cstring>
#include <unordered_map>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

/// Equal keys mean equal data, across samples, properties and files.
struct ArraySampleKey : public Alembic::Util::totally_ordered<ArraySampleKey>
{
    uint64_t numBytes = 0;                  ///< bytes of the data
    PlainOldDataType origPOD = kUnknownPOD; ///< type as stored
    PlainOldDataType readPOD = kUnknownPOD; ///< type as read
    Digest digest;                          ///< hash of the data as stored

    bool operator==(const ArraySampleKey& rhs) const
    {
        return numBytes == rhs.numBytes && origPOD == rhs.origPOD && readPOD == rhs.readPOD && digest == rhs.digest;
    }
    bool operator<(const ArraySampleKey& rhs) const
    {
        if (numBytes != rhs.numBytes) return numBytes < rhs.numBytes;
        if (origPOD != rhs.origPOD) return origPOD < rhs.origPOD;
        if (readPOD != rhs.readPOD) return readPOD < rhs.readPOD;
        return digest < rhs.digest;
    }
};

/// A hash value for containers: the digest is one already.
inline size_t StdHash(const ArraySampleKey& key)
{
    return static_cast<size_t>(key.digest.words[0] ^ key.digest.words[1]);
}

struct ArraySampleKeyStdHash
{
    size_t operator()(const ArraySampleKey& key) const { return StdHash(key); }
};

struct ArraySampleKeyEqualTo
{
    bool operator()(const ArraySampleKey& x, const ArraySampleKey& y) const { return x == y; }
};

/// The hash map from keys to T.
template <class T>
struct UnorderedMapUtil
{
    typedef std::unordered_map<ArraySampleKey, T, ArraySampleKeyStdHash, ArraySampleKeyEqualTo> umap_type;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
