/// @file
/// Files are written with positioned, gathered writes; streams by seeking.
#include "output_target.h"

#include <Alembic/Util/Exception.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace Alembic::Ogawa {

namespace {

std::string reason_of(int error)
{
    return std::generic_category().message(error);
}

class FileTarget final : public OutputTarget
{
public:
    explicit FileTarget(const std::string& name)
        : name_(name)
    {
        // Without O_NONBLOCK a pipe that nobody reads would hold us up; for files it means nothing.
        do {
            descriptor_ = ::open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0666);
        } while (descriptor_ < 0 && errno == EINTR);
        if (descriptor_ < 0) refuse(errno);
        struct stat status = {};
        int error = ::fstat(descriptor_, &status) != 0 ? errno : 0;
        if (error == 0 && ::lseek(descriptor_, 0, SEEK_CUR) < 0) error = errno; // a pipe, a terminal
        if (error != 0) {
            ::close(descriptor_);
            refuse(error);
        }
        is_regular_ = S_ISREG(status.st_mode);
    }

    ~FileTarget() override
    {
        if (descriptor_ >= 0) ::close(descriptor_);
    }

    FileTarget(const FileTarget&) = delete;
    FileTarget& operator=(const FileTarget&) = delete;

    void write(std::uint64_t position, const Bytes* parts, std::size_t part_count) override
    {
        std::uint64_t end = position;
        for (std::size_t i = 0; i < part_count; ++i)
            end += parts[i].size;
        check_size_limit(end);

        std::array<iovec, 16> pending = {};
        std::size_t next = 0;
        std::size_t done_of_next = 0;
        while (position < end) {
            int pending_count = 0;
            for (std::size_t i = next; i < part_count && pending_count < int(pending.size()); ++i) {
                const std::size_t done = i == next ? done_of_next : 0;
                pending[pending_count++] = {const_cast<char*>(static_cast<const char*>(parts[i].data)) + done,
                                            parts[i].size - done};
            }
            const ssize_t written = ::pwritev(descriptor_, pending.data(), pending_count, off_t(position));
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) fail(written < 0 ? errno : EIO);
            position += std::uint64_t(written);
            done_of_next += std::size_t(written);
            while (next < part_count && done_of_next >= parts[next].size)
                done_of_next -= parts[next++].size;
        }
    }

    void flush() override
    {
        // Closing is when network file systems report what could not be stored: close a copy, keep the file.
        const int copy = ::fcntl(descriptor_, F_DUPFD_CLOEXEC, 0);
        if (copy >= 0 && ::close(copy) != 0 && errno != EINTR) fail(errno);
    }

    void close() override
    {
        const int descriptor = descriptor_;
        descriptor_ = -1;
        if (::close(descriptor) != 0 && errno != EINTR) fail(errno);
    }

private:
    [[noreturn]] void refuse(int error) const
    {
        // A file that is created can only be missing its folder: that text stands alone, programs compare it.
        const std::string reason = error == ENOENT ? std::string() : " (" + reason_of(error) + ")";
        throw Util::Exception("Could not open file: " + name_ + reason);
    }

    [[noreturn]] void fail(int error) const
    {
        throw Util::Exception("Could not write file: " + name_ + " (" + reason_of(error) + ")");
    }

    /// The process's limit is tested before the system does, because that would end the program with a signal.
    void check_size_limit(std::uint64_t end) const
    {
        struct rlimit limit = {};
        if (is_regular_ && ::getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY &&
            end > limit.rlim_cur)
            fail(EFBIG);
    }

    std::string name_;
    int descriptor_ = -1;
    bool is_regular_ = false;
};

class StreamTarget final : public OutputTarget
{
public:
    explicit StreamTarget(std::ostream& stream)
        : stream_(stream)
    {
        try {
            const std::streamoff start = stream.good() ? std::streamoff(stream.tellp()) : -1;
            if (start >= 0) {
                start_ = std::uint64_t(start);
                return;
            }
        } catch (const std::exception&) { // of a stream that throws on failures; the text is ours all the same
        }
        throw Util::Exception("Could not use the given ostream.");
    }

    void write(std::uint64_t position, const Bytes* parts, std::size_t part_count) override
    {
        guarded([&] {
            if (position != position_) stream_.seekp(std::streamoff(start_ + position));
            for (std::size_t i = 0; i < part_count; ++i) {
                stream_.write(static_cast<const char*>(parts[i].data), std::streamsize(parts[i].size));
                position += parts[i].size;
            }
            position_ = position;
            end_ = std::max(end_, position);
        });
    }

    void flush() override
    {
        guarded([&] { stream_.flush(); });
    }

    /// Leaves the stream standing behind the container.
    void close() override
    {
        guarded([&] { stream_.seekp(std::streamoff(start_ + end_)).flush(); });
    }

private:
    template <class Operation>
    void guarded(Operation operation)
    {
        std::string reason = "the stream failed";
        try {
            operation();
            if (stream_.good()) return;
        } catch (const std::exception& exception) {
            reason = exception.what();
        } catch (...) { // a stream of the caller's may throw anything; what failed must not pass for written
        }
        throw Util::Exception("Could not write to the given ostream (" + reason + ")");
    }

    std::ostream& stream_;
    std::uint64_t start_ = 0;    ///< the stream's own position of the container's byte 0
    std::uint64_t position_ = 0; ///< where the next write goes without seeking
    std::uint64_t end_ = 0;
};

} // namespace

std::unique_ptr<OutputTarget> open_output_file(const std::string& name)
{
    return std::make_unique<FileTarget>(name);
}

std::unique_ptr<OutputTarget> open_output_stream(std::ostream& stream)
{
    return std::make_unique<StreamTarget>(stream);
}

} // namespace Alembic::Ogawa
