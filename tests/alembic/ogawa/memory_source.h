/// @file
/// A byte source in memory that counts its reads.
#pragma once

#include "ogawa/byte_source.h"

#include <atomic>
#include <cstring>

namespace vo_test {

class MemorySource final : public Alembic::Ogawa::ByteSource
{
public:
    explicit MemorySource(std::string bytes)
        : bytes_(std::move(bytes))
    {
    }

    std::uint64_t size() const override { return bytes_.size(); }
    void read(std::uint64_t position, void* into, std::size_t size) const override
    {
        ++reads;
        if (position > bytes_.size() || size > bytes_.size() - position) Alembic::Ogawa::throw_read_failed();
        std::memcpy(into, bytes_.data() + position, size);
    }

    mutable std::atomic<int> reads{0};

private:
    std::string bytes_;
};

} // namespace vo_test
