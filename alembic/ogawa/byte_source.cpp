/// @file
/// Positioned reads from files and streams.
#include "ogawa/byte_source.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <istream>
#include <limits>
#include <stdexcept>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace Alembic::Ogawa {

void throw_read_failed()
{
    throw std::runtime_error("Ogawa IStreams::read failed.");
}

FileSource::FileSource(const std::string& name)
{
    // Non-blocking: opening a pipe that nobody writes to must not wait. It means nothing for regular files.
    do
        descriptor_ = ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    while (descriptor_ < 0 && errno == EINTR);
    if (descriptor_ < 0) throw std::runtime_error(std::string("it cannot be opened: ") + std::strerror(errno));

    struct stat status = {};
    const char* refusal = nullptr;
    if (::fstat(descriptor_, &status) != 0)
        refusal = "its size cannot be found out";
    else if (S_ISDIR(status.st_mode))
        refusal = "it is a folder";
    else if (!S_ISREG(status.st_mode))
        refusal = "it is not a regular file";
    if (refusal) {
        ::close(descriptor_);
        throw std::runtime_error(refusal);
    }
    size_ = static_cast<std::uint64_t>(status.st_size);
}

FileSource::~FileSource()
{
    ::close(descriptor_);
}

void FileSource::read(std::uint64_t position, void* into, std::size_t size) const
{
    if (position > size_ || size > size_ - position) throw_read_failed();
    constexpr std::size_t most_at_once = std::size_t(1) << 30; // the system reads no more than 2 GiB in one call
    auto* target = static_cast<unsigned char*>(into);
    while (size > 0) {
        const ssize_t got =
            ::pread(descriptor_, target, size < most_at_once ? size : most_at_once, static_cast<off_t>(position));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) // an error, or the file got shorter since it was opened
            throw_read_failed();
        target += got;
        position += static_cast<std::uint64_t>(got);
        size -= static_cast<std::size_t>(got);
    }
}

StreamSource::StreamSource(const std::vector<std::istream*>& streams)
{
    if (streams.empty()) throw std::runtime_error("no streams were given");
    for (std::istream* stream : streams) {
        if (!stream || !*stream) throw std::runtime_error("a stream is null or has failed");
        auto entry = std::make_unique<Stream>();
        entry->stream = stream;
        entry->start = stream->tellg();
        stream->seekg(0, std::ios::end);
        const std::int64_t end = stream->tellg();
        if (!*stream || entry->start < 0 || end < entry->start) throw std::runtime_error("a stream cannot seek");
        stream->seekg(entry->start);
        const auto size = static_cast<std::uint64_t>(end - entry->start);
        if (!streams_.empty() && size != size_) throw std::runtime_error("the streams differ in size");
        size_ = size;
        streams_.push_back(std::move(entry));
    }
}

void StreamSource::read(std::uint64_t position, void* into, std::size_t size) const
{
    // Start at a stream of this thread's own, so that threads rarely try the same one.
    const std::size_t first = std::hash<std::thread::id>()(std::this_thread::get_id()) % streams_.size();
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        Stream& stream = *streams_[(first + i) % streams_.size()];
        const std::unique_lock<std::mutex> lock(stream.busy, std::try_to_lock);
        if (lock.owns_lock()) return read_locked(stream, position, into, size);
    }
    read_stream(first, position, into, size);
}

void StreamSource::read_stream(std::size_t index, std::uint64_t position, void* into, std::size_t size) const
{
    Stream& stream = *streams_[index];
    const std::lock_guard<std::mutex> lock(stream.busy);
    read_locked(stream, position, into, size);
}

void StreamSource::read_locked(Stream& stream, std::uint64_t position, void* into, std::size_t size) const
{
    if (position > size_ || size > size_ - position) throw_read_failed();
    bool complete = false;
    try {
        stream.stream->clear(); // an earlier short read must not spoil this one
        stream.stream->seekg(stream.start + static_cast<std::int64_t>(position));
        stream.stream->read(static_cast<char*>(into), static_cast<std::streamsize>(size));
        complete = stream.stream->good() && static_cast<std::size_t>(stream.stream->gcount()) == size;
    } catch (const std::ios_base::failure&) {
        // The caller's stream reports errors as exceptions: the same answer as for one that does not.
    }
    if (!complete) throw_read_failed();
}

} // namespace Alembic::Ogawa
