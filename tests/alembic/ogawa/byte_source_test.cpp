/// Positioned reads from files and streams.
#include "ogawa/byte_source.h"
#include "support/scratch_file.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using Alembic::Ogawa::ByteSource;
using Alembic::Ogawa::FileSource;
using Alembic::Ogawa::StreamSource;

namespace {

std::string counting_bytes(std::size_t size)
{
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 251);
    return bytes;
}

std::string read_all(const ByteSource& source, std::uint64_t position, std::size_t size)
{
    std::string bytes(size, '\0');
    source.read(position, &bytes[0], size);
    return bytes;
}

/// Why `open()` fails.
template <class Open>
std::string reason_of(const Open& open)
{
    try {
        open();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "opened";
}

} // namespace

TEST(FileSource, ReadsWhatTheFileHoldsAndNothingBeyond)
{
    const std::string content = counting_bytes(1000);
    const ScratchFile file("counting");
    std::ofstream(file.path(), std::ios::binary) << content;
    const FileSource source(file.path());
    ASSERT_EQ(source.size(), 1000u);
    EXPECT_EQ(read_all(source, 0, 1000), content);
    EXPECT_EQ(read_all(source, 990, 10), content.substr(990));
    EXPECT_EQ(read_all(source, 1000, 0), "");
    EXPECT_THROW(read_all(source, 991, 10), std::runtime_error);
    EXPECT_THROW(read_all(source, 1001, 0), std::runtime_error);
    EXPECT_THROW(read_all(source, ~0ull - 3, 8), std::runtime_error);
}

TEST(FileSource, AFileThatGetsShorterWhileOpenCostsAnError)
{
    const ScratchFile file("shrinking");
    std::ofstream(file.path(), std::ios::binary) << counting_bytes(100000);
    const FileSource source(file.path());
    ASSERT_EQ(::truncate(file.path().c_str(), 500), 0);
    EXPECT_EQ(read_all(source, 0, 500), counting_bytes(500));
    EXPECT_THROW(read_all(source, 400, 200), std::runtime_error);
    EXPECT_THROW(read_all(source, 90000, 8), std::runtime_error);
}

TEST(FileSource, RefusesWhatIsNoRegularFileWithTheReason)
{
    const auto reason = [](const std::string& name) { return reason_of([&] { FileSource source(name); }); };
    EXPECT_EQ(reason("/nowhere/at/all.abc"), "it cannot be opened: No such file or directory");
    const ScratchFile pipe("pipe");
    EXPECT_EQ(reason(pipe.folder()), "it is a folder");
    ASSERT_EQ(::mkfifo(pipe.path().c_str(), 0600), 0);
    EXPECT_EQ(reason(pipe.path()), "it is not a regular file"); // and does not wait for a writer
}

TEST(StreamSource, PositionsCountFromWhereTheStreamStood)
{
    std::istringstream stream("before" + counting_bytes(300));
    stream.seekg(6);
    const StreamSource source({&stream});
    ASSERT_EQ(source.size(), 300u);
    EXPECT_EQ(read_all(source, 0, 300), counting_bytes(300));
    EXPECT_THROW(read_all(source, 299, 2), std::runtime_error);
    EXPECT_EQ(read_all(source, 299, 1), counting_bytes(300).substr(299)) << "a failed read must not spoil the next";
}

TEST(StreamSource, RefusesStreamsThatAreMissingFailedOrDifferent)
{
    std::istringstream one("12345678");
    std::istringstream other("123456789");
    std::istringstream failed("12345678");
    failed.setstate(std::ios::failbit);
    struct NoSeeking : std::stringbuf
    {
        pos_type seekoff(off_type, std::ios::seekdir, std::ios::openmode) override { return -1; }
    } no_seeking;
    std::istream pipe(&no_seeking);
    const auto reason = [](const std::vector<std::istream*>& streams) {
        return reason_of([&] { StreamSource source(streams); });
    };
    EXPECT_EQ(reason({}), "no streams were given");
    EXPECT_EQ(reason({&one, nullptr}), "a stream is null or has failed");
    EXPECT_EQ(reason({&failed}), "a stream is null or has failed");
    EXPECT_EQ(reason({&pipe}), "a stream cannot seek");
    EXPECT_EQ(reason({&one, &other}), "the streams differ in size");
}

TEST(StreamSource, AStreamThatThrowsAnswersLikeOneThatDoesNot)
{
    std::istringstream stream(counting_bytes(64));
    const StreamSource source({&stream});
    stream.str("short"); // the stream changes under us
    stream.exceptions(std::ios::failbit | std::ios::eofbit | std::ios::badbit);
    EXPECT_THROW(
        try { read_all(source, 32, 8); } catch (const std::ios_base::failure&) {
            FAIL() << "the stream's own exception came through";
        },
        std::runtime_error);
}

TEST(StreamSource, AThreadWaitsForTheOnlyStream)
{
    struct SlowBuffer : std::stringbuf
    {
        using std::stringbuf::stringbuf;
        std::atomic<bool> is_slow{false}, is_reading{false};
        std::streamsize xsgetn(char* into, std::streamsize size) override
        {
            is_reading = true;
            if (is_slow) std::this_thread::sleep_for(std::chrono::milliseconds(200));
            return std::stringbuf::xsgetn(into, size);
        }
    } buffer{counting_bytes(100)};
    std::istream stream(&buffer);
    const StreamSource source({&stream});
    buffer.is_slow = true;
    std::string first;
    std::thread reader([&] { first = read_all(source, 0, 50); });
    while (!buffer.is_reading)
        std::this_thread::yield();
    EXPECT_EQ(read_all(source, 50, 50), counting_bytes(100).substr(50));
    reader.join();
    EXPECT_EQ(first, counting_bytes(50));
}

TEST(StreamSource, ManyThreadsShareFewStreams)
{
    const std::string content = counting_bytes(50000);
    std::istringstream first(content);
    std::istringstream second(content);
    const StreamSource source({&first, &second});
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (unsigned t = 0; t < 6; ++t)
        threads.emplace_back([&, t] {
            for (unsigned i = 0; i < 300; ++i) {
                const std::size_t at = (i * 997 + t * 131) % 49000;
                wrong += read_all(source, at, 1000) != content.substr(at, 1000);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}
