/// @file
/// Writes an Ogawa container: data blocks and groups, append-only, marked complete only at the very end.
#pragma once

#include "format.h"
#include "output_target.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace Alembic::Ogawa {

/// Small blocks are gathered in a buffer of fixed size, large data goes from the caller's memory straight to the
/// target. Nothing else is kept, however much is written.
///
/// The first failure is remembered: from then on every member throws it again and the container is never marked
/// complete. Used by one thread at a time.
class FileWriter
{
public:
    /// Writes the header, not yet frozen. Throws Util::Exception when that fails.
    explicit FileWriter(std::unique_ptr<OutputTarget> target);

    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    /// Appends one data block with the bytes of `parts` one after the other (none may overlap a later change by the
    /// caller: they are written or copied before this returns). Returns the child entry that refers to it, which is
    /// `empty_data`, and nothing is written, when there are no bytes.
    std::uint64_t append_data(std::initializer_list<Bytes> parts);

    /// Appends one data block of `head_size` bytes and then `body`. `make_head` fills the head in, and may read the
    /// body for that; from `least_body_for_thread` bytes on it does so on another thread, while the body is written.
    /// Returns the block's child entry. No thread is left behind, whatever happens.
    std::uint64_t append_data(std::size_t head_size, const std::function<void(void*)>& make_head, const Bytes& body);

    static constexpr std::size_t least_body_for_thread = 1 << 20; ///< written in a multiple of what starting one takes

    /// Appends a group with these child entries, and returns the entry that refers to it: `empty_group` for none.
    std::uint64_t append_group(const std::vector<std::uint64_t>& entries);

    /// The same for `count` entries that `next` returns one after the other: they need not be in memory all at once.
    std::uint64_t append_group(std::uint64_t count, const std::function<std::uint64_t()>& next);

    /// Completes the container with `root_entry`, the entry of its root group, and closes the target. The frozen flag
    /// is the last byte written, after everything else was taken by the system. Nothing can be appended afterwards.
    void finish(std::uint64_t root_entry);

    /// Throws the failure that was met, if any.
    void check() const;

    /// Makes every later call fail with `failure`: for users that lost something that belongs into the container.
    void give_up(const std::string& failure) noexcept;

    bool has_failed() const { return failed_; }

private:
    template <class Operation>
    void guarded(Operation operation);
    void append(const Bytes* parts, std::size_t part_count, std::uint64_t size);
    void write_buffer();

    std::unique_ptr<OutputTarget> target_;
    std::vector<char> buffer_;  ///< the last bytes of the container, not yet handed to the target
    std::uint64_t written_ = 0; ///< bytes handed to the target: the position of the buffer's first byte
    std::string failure_;
    bool failed_ = false;
};

} // namespace Alembic::Ogawa
