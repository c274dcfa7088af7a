/// @file
/// Where a container's bytes go: a file or a std::ostream. Writes at positions, and reports every failure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>

namespace Alembic::Ogawa {

/// A run of bytes that belongs to the caller.
struct Bytes
{
    const void* data = nullptr;
    std::size_t size = 0;
};

/// Every member but the destructor throws Util::Exception with the target's name and the system's reason.
class OutputTarget
{
public:
    virtual ~OutputTarget() = default;

    /// Writes `parts` one after the other, the first at `position` (bytes from the container's start), wholly or not:
    /// after a failure it is unknown how much of them arrived.
    virtual void write(std::uint64_t position, const Bytes* parts, std::size_t part_count) = 0;

    /// Hands what was written to the system, as far as failures can still show up on the way; not a sync to the disk.
    virtual void flush() = 0;

    /// Flushes and lets go of the target. To be called once; without it the destructor lets go and says nothing.
    virtual void close() = 0;
};

/// Creates or truncates the file. Throws "Could not open file: NAME", followed by the reason unless it is just a folder
/// that does not exist.
std::unique_ptr<OutputTarget> open_output_file(const std::string& name);

/// Writes from where `stream` stands now, which becomes position 0. The stream stays the caller's and has to outlive
/// the target. Throws "Could not use the given ostream." when it is not good or cannot seek.
std::unique_ptr<OutputTarget> open_output_stream(std::ostream& stream);

} // namespace Alembic::Ogawa
