/// @file
/// The child entries of a group that is not written yet, kept in few bytes.
#pragma once

#include <Alembic/Util/Config.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Keeps the distances between entries, and how often each distance follows itself: entries at even distances, as an
/// animation with samples of constant size has them, take no memory. Others take 3 to 6 bytes each as a rule: the bytes
/// that their distance's value needs (7 bits a byte, and a bit for its sign), and one.
class EntryList
{
public:
    /// Appends `entry`, `times` times.
    void append(std::uint64_t entry, std::uint64_t times = 1);

    std::uint64_t size() const { return size_; }
    std::uint64_t back() const { return last_; } ///< the entry appended last; 0 when there is none

    /// Goes through the entries, which must not change meanwhile.
    class Reader
    {
    public:
        explicit Reader(const EntryList& list)
            : list_(list)
        {
        }

        /// The next entry; to be called as often as the list has entries.
        std::uint64_t next();

    private:
        const EntryList& list_;
        std::size_t at_ = 0; ///< in the list's bytes
        std::uint64_t entry_ = 0;
        std::uint64_t distance_ = 0;
        std::uint64_t left_in_run_ = 0;
    };

private:
    void append_run(std::uint64_t distance, std::uint64_t count);

    std::vector<std::uint8_t> bytes_; ///< of finished runs: distance, count
    std::uint64_t size_ = 0;
    std::uint64_t last_ = 0;
    std::uint64_t distance_ = 0; ///< of the open run; modulo 2^64, so that a smaller entry is a distance too
    std::uint64_t run_ = 0;      ///< entries in it
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
