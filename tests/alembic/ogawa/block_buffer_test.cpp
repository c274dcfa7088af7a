#include "memory_source.h"
#include "ogawa/block_buffer.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>
#include <vector>

using Alembic::Ogawa::BlockBuffer;
using vo_test::MemorySource;

namespace {

std::string random_bytes(std::size_t size, unsigned seed)
{
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

/// Small and large reads all over the buffer, compared with the bytes; the number that differed.
int compare_random_reads(const BlockBuffer& buffer, const std::string& bytes, unsigned seed, int count)
{
    std::mt19937 random(seed);
    int wrong = 0;
    for (int i = 0; i < count; ++i) {
        const std::size_t position = random() % (bytes.size() + 1);
        const std::size_t most = i % 10 == 0 ? 100000 : 300;
        const std::size_t size = std::min<std::size_t>(random() % most, bytes.size() - position);
        std::string read(size, '\0');
        buffer.read(position, &read[0], size);
        wrong += bytes.compare(position, size, read) != 0;
    }
    return wrong;
}

} // namespace

TEST(BlockBuffer, GivesTheBytesOfTheSourceWhateverTheReads)
{
    const std::size_t block = BlockBuffer::block_size;
    const std::size_t sizes[] = {1,         100,           BlockBuffer::whole_limit, BlockBuffer::whole_limit + 1,
                                 3 * block, 3 * block + 1, 60 * block - 1,           100 * block + 17};
    for (const std::size_t size : sizes) {
        const std::string bytes = random_bytes(size, 1);
        const BlockBuffer buffer(std::make_unique<MemorySource>(bytes));
        EXPECT_EQ(compare_random_reads(buffer, bytes, 2, 3000), 0) << size << " bytes, seed 2";
    }
}

TEST(BlockBuffer, RefusesWhatDoesNotLieInside)
{
    const volatile std::size_t huge = ~std::size_t(0) - 3; // volatile: the compiler must not see through it
    for (const std::size_t size : {std::size_t(50), BlockBuffer::whole_limit + 50}) {
        const BlockBuffer buffer(std::make_unique<MemorySource>(std::string(size, 'x')));
        char into[64];
        EXPECT_NO_THROW(buffer.read(size, into, 0));
        EXPECT_THROW(buffer.read(size + 1, into, 0), std::runtime_error);
        EXPECT_THROW(buffer.read(size - 8, into, 9), std::runtime_error);
        EXPECT_THROW(buffer.read(~0ull - 3, into, 8), std::runtime_error);
        EXPECT_THROW(buffer.read(8, into, huge), std::runtime_error);
    }
}

TEST(BlockBuffer, BatchesSmallReadsAndPassesLargeOnes)
{
    auto owned = std::make_unique<MemorySource>(std::string(1000000, 'x'));
    const MemorySource& source = *owned;
    const BlockBuffer buffer(std::move(owned));
    char into[20000];
    for (std::uint64_t at = 0; at + 8 <= 320000; at += 8)
        buffer.read(at, into, 8);
    EXPECT_LE(source.reads, 320000 / int(BlockBuffer::block_size) + 1);
    const int before = source.reads;
    buffer.read(500000, into, sizeof into);
    EXPECT_EQ(source.reads, before + 1);
}

TEST(BlockBuffer, ASourceThatFailsOnceIsAskedAgain)
{
    class Failing final : public Alembic::Ogawa::ByteSource
    {
    public:
        std::uint64_t size() const override { return 200000; }
        void read(std::uint64_t, void* into, std::size_t size) const override
        {
            std::memset(into, 'b', size);
            if (fail) Alembic::Ogawa::throw_read_failed();
            std::memset(into, 'a', size);
        }
        bool fail = true;
    };
    auto owned = std::make_unique<Failing>();
    Failing& source = *owned;
    const BlockBuffer buffer(std::move(owned));
    char into = 0;
    EXPECT_THROW(buffer.read(100, &into, 1), std::runtime_error);
    source.fail = false;
    buffer.read(100, &into, 1);
    EXPECT_EQ(into, 'a') << "what a failed read left behind was taken for the file's bytes";
}

TEST(BlockBuffer, BlocksOfAClosedSourceAreNotTakenForThoseOfTheNext)
{
    for (const char letter : {'a', 'b', 'c'}) {
        const BlockBuffer buffer(std::make_unique<MemorySource>(std::string(100000, letter)));
        char into = 0;
        buffer.read(5000, &into, 1);
        EXPECT_EQ(into, letter);
    }
}

TEST(BlockBuffer, ThreadsReadSeveralSourcesAtOnce)
{
    const std::string bytes[] = {random_bytes(2000000, 3), random_bytes(70000, 4), random_bytes(1000, 5)};
    std::vector<std::unique_ptr<BlockBuffer>> buffers;
    for (const std::string& content : bytes)
        buffers.push_back(std::make_unique<BlockBuffer>(std::make_unique<MemorySource>(content)));
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (unsigned t = 0; t < 4; ++t)
        threads.emplace_back([&, t] {
            for (unsigned round = 0; round < 6; ++round)
                for (std::size_t i = 0; i < 3; ++i)
                    wrong += compare_random_reads(*buffers[i], bytes[i], t * 100 + round, 100);
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}
