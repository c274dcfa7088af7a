/// @file
/// Where the bytes of a container come from: positioned reads, safe from any number of threads at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Alembic::Ogawa {

/// A run of bytes of a known, fixed size.
class ByteSource
{
public:
    virtual ~ByteSource() = default;

    /// Bytes there are, found out once, at opening.
    virtual std::uint64_t size() const = 0;

    /// Copies the `size` bytes at `position` to `into`. Throws std::runtime_error "Ogawa IStreams::read failed." when
    /// they are not all there; `into` may be written in part then.
    virtual void read(std::uint64_t position, void* into, std::size_t size) const = 0;
};

/// A regular file, read through one descriptor without seeking. A file that gets shorter while it is open costs an
/// error, never a signal.
class FileSource final : public ByteSource
{
public:
    /// Throws std::runtime_error with the reason when `name` cannot be opened or is not a regular file.
    explicit FileSource(const std::string& name);
    ~FileSource() override;
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    std::uint64_t size() const override { return size_; }
    void read(std::uint64_t position, void* into, std::size_t size) const override;

private:
    int descriptor_ = -1;
    std::uint64_t size_ = 0;
};

/// Open streams that hold copies of one file; position 0 is where each stood when it was handed over. The caller keeps
/// them alive. A stream serves one thread at a time: as many threads read at once as there are streams.
class StreamSource final : public ByteSource
{
public:
    /// Throws std::runtime_error when there are no streams, one is null or cannot seek, or their sizes differ.
    explicit StreamSource(const std::vector<std::istream*>& streams);

    std::uint64_t size() const override { return size_; }
    void read(std::uint64_t position, void* into, std::size_t size) const override;

    /// Copies bytes of stream `index`, which must be one of those given, to `into`.
    void read_stream(std::size_t index, std::uint64_t position, void* into, std::size_t size) const;
    std::size_t stream_count() const { return streams_.size(); }

private:
    struct Stream
    {
        std::istream* stream = nullptr;
        std::int64_t start = 0; ///< where the stream stood when it was handed over
        std::mutex busy;
    };

    void read_locked(Stream& stream, std::uint64_t position, void* into, std::size_t size) const;

    std::vector<std::unique_ptr<Stream>> streams_;
    std::uint64_t size_ = 0;
};

/// Throws what a read outside the bytes, or one that comes back short, throws.
[[noreturn]] void throw_read_failed();

} // namespace Alembic::Ogawa
