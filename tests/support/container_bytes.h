/// @file
/// Builds Ogawa containers byte by byte, sound ones and others.
#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

namespace vo_test {

/// The bytes of numbers as they stand in a file.
template <class... Numbers>
std::string bytes_of(Numbers... numbers)
{
    std::string bytes;
    (bytes.append(reinterpret_cast<const char*>(&numbers), sizeof numbers), ...);
    return bytes;
}

constexpr std::uint64_t data_entry_bit = 0x8000000000000000;

/// Appends blocks; what they return are entries for groups.
class ContainerBytes
{
public:
    std::uint64_t data(const std::string& payload)
    {
        if (payload.empty()) return data_entry_bit;
        return data_entry_bit | append(bytes_of(std::uint64_t(payload.size())) + payload);
    }

    std::uint64_t group(const std::vector<std::uint64_t>& entries)
    {
        if (entries.empty()) return 0;
        std::string block = bytes_of(std::uint64_t(entries.size()));
        for (const std::uint64_t entry : entries)
            block += bytes_of(entry);
        return append(block);
    }

    /// Appends bytes that need not be a block; returns their position.
    std::uint64_t append(const std::string& block)
    {
        const std::uint64_t position = 16 + blocks_.size();
        blocks_ += block;
        return position;
    }

    /// Where the next block will stand.
    std::uint64_t end() const { return 16 + blocks_.size(); }

    /// The whole container.
    std::string finish(std::uint64_t root) const { return std::string("Ogawa\xff\0\1", 8) + bytes_of(root) + blocks_; }

private:
    std::string blocks_;
};

} // namespace vo_test
