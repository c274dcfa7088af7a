/// @file
/// The hashes that an archive stores for its objects, built from hashes of properties and digests of samples.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>
#include <Alembic/Util/Digest.h>
#include <Alembic/Util/SpookyV2.h>

#include <cstddef>
#include <string>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

/// Hashes the concatenation of what is added; lengths are not part of it.
class ContentHash
{
public:
    ContentHash() { hash_.Init(0, 0); }

    ContentHash& add(const void* data, std::size_t size);
    ContentHash& add(const std::string& text) { return add(text.data(), text.size()); }
    ContentHash& add(const Util::Digest& digest) { return add(digest.d, sizeof digest.d); }

    template <class Number>
    ContentHash& add_number(Number number)
    {
        return add(&number, sizeof number);
    }

    /// The time per cycle, how many times are stored, and these.
    ContentHash& add(const AbcA::TimeSampling& sampling);

    Util::Digest result() const;

private:
    Util::SpookyHash hash_;
};

/// One hash for a sequence of samples. Repeats count: they are added like any other sample.
class SampleSequenceHash
{
public:
    /// The sample after those added so far, with its digest as stored (zero for one without elements).
    void add(const Util::Digest& sample);

    bool has_samples() const { return has_samples_; }
    const Util::Digest& result() const { return accumulated_; }

private:
    Util::Digest accumulated_;
    bool has_samples_ = false;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
