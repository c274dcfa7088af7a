/// The container writer: blocks, the order of the last writes, failures.
#include "ogawa/file_writer.h"

#include "support/limited_stream.h"
#include "support/scratch_file.h"

#include <Alembic/Util/Exception.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Ogawa = Alembic::Ogawa;
using Alembic::Util::Exception;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string bytes_of(std::initializer_list<int> values)
{
    return std::string(values.begin(), values.end());
}

std::string bytes_of(std::uint64_t number)
{
    return std::string(reinterpret_cast<const char*>(&number), sizeof number);
}

std::uint64_t number_at(const std::string& file, std::uint64_t position)
{
    std::uint64_t number = 0;
    std::memcpy(&number, file.data() + position, sizeof number);
    return number;
}

template <class Operation>
std::string error_of(Operation operation)
{
    try {
        operation();
    } catch (const Exception& exception) {
        return exception.what();
    }
    return "";
}

bool is_marked_complete(const std::string& file)
{
    return file.size() >= 16 && (file[5] != 0 || number_at(file, 8) != 0);
}

/// Writes blocks of random sizes, among them large ones that bypass the buffer; `expected` gets the entries of the
/// data blocks with their bytes, `root` the group of all of them.
struct RandomContainer
{
    std::vector<std::pair<std::uint64_t, std::string>> data;
    std::uint64_t root = 0;

    RandomContainer(Ogawa::FileWriter& writer, unsigned seed)
    {
        std::mt19937 random(seed);
        std::vector<std::uint64_t> entries;
        for (int i = 0; i < 60; ++i) {
            const std::size_t limit = i % 7 == 0 ? 300000 : 600;
            std::string head(random() % 40, char(random()));
            std::string tail(random() % limit, char(random()));
            entries.push_back(writer.append_data({{head.data(), head.size()}, {tail.data(), tail.size()}}));
            data.emplace_back(entries.back(), head + tail);
            if (i % 10 == 9) entries.push_back(writer.append_group(entries));
        }
        root = writer.append_group(entries);
        writer.finish(root);
    }
};

} // namespace

TEST(FileWriter, BytesOfASmallContainer)
{
    ScratchFile file("small.ogawa");
    {
        Ogawa::FileWriter writer(Ogawa::open_output_file(file.path()));
        EXPECT_EQ(file.bytes(), "Ogawa" + bytes_of({0, 0, 1}) + bytes_of(0));
        EXPECT_EQ(writer.append_data({{"ab", 2}, {"", 0}, {"c", 1}}), 0x8000000000000010u);
        EXPECT_EQ(writer.append_data({{nullptr, 0}}), Ogawa::empty_data);
        EXPECT_EQ(writer.append_group({}), Ogawa::empty_group);
        const std::uint64_t root = writer.append_group({0x8000000000000010u, Ogawa::empty_data, Ogawa::empty_group});
        EXPECT_EQ(root, 0x1bu);
        writer.finish(root);
        EXPECT_EQ(error_of([&] {
                      writer.append_data({{"d", 1}});
                  }),
                  "The archive is finished already: nothing can be added");
    }
    EXPECT_EQ(file.bytes(), "Ogawa" + bytes_of({0xff, 0, 1}) + bytes_of(0x1b) + bytes_of(3) + "abc" + bytes_of(3) +
                                bytes_of(0x8000000000000010u) + bytes_of(0x8000000000000000u) + bytes_of(0));
}

TEST(FileWriter, EveryEntryLeadsToItsBytesAndStreamsGetTheSameFile)
{
    for (unsigned seed = 1; seed <= 8; ++seed) {
        ScratchFile file("random.ogawa");
        Ogawa::FileWriter writer(Ogawa::open_output_file(file.path()));
        const RandomContainer written(writer, seed);
        const std::string bytes = file.bytes();
        EXPECT_EQ(number_at(bytes, 8), written.root);
        for (const auto& [entry, data] : written.data) {
            if (data.empty()) {
                EXPECT_EQ(entry, Ogawa::empty_data);
                continue;
            }
            const std::uint64_t position = entry & Ogawa::position_mask;
            ASSERT_EQ(number_at(bytes, position), data.size()) << "seed " << seed;
            ASSERT_EQ(bytes.compare(position + 8, data.size(), data), 0) << "seed " << seed;
        }
        std::stringstream stream;
        stream << "what stood there before";
        Ogawa::FileWriter stream_writer(Ogawa::open_output_stream(stream));
        const RandomContainer same(stream_writer, seed);
        stream << "what comes after";
        EXPECT_TRUE(stream.str() == "what stood there before" + bytes + "what comes after") << "seed " << seed;
    }
}

TEST(FileWriter, AHeadMadeFromTheBodyStandsBeforeItHoweverLargeTheBodyIs)
{
    const auto sum_of = [](const std::string& body) {
        return std::accumulate(body.begin(), body.end(), std::uint64_t(7));
    };
    for (const std::size_t size : {0, 5, 40000, 1 << 20, 3000001}) {
        std::string body(size, 'b');
        for (std::size_t i = 0; i < size; i += 97)
            body[i] = char(i);
        const auto make_head = [&](void* head) {
            const std::uint64_t sum = sum_of(body);
            std::memcpy(head, &sum, sizeof sum);
        };
        std::stringstream stream;
        Ogawa::FileWriter writer(Ogawa::open_output_stream(stream));
        writer.append_data({{"before", 6}});
        const std::uint64_t entry = writer.append_data(8, make_head, {body.data(), body.size()});
        writer.finish(writer.append_group({entry}));
        const std::string bytes = stream.str();
        const std::uint64_t position = entry & Ogawa::position_mask;
        EXPECT_EQ(number_at(bytes, position), 8 + size);
        EXPECT_EQ(number_at(bytes, position + 8), sum_of(body)) << size;
        EXPECT_EQ(bytes.compare(position + 16, size, body), 0) << size;

        // A full disk, met while the head is being made and when it is put in its place.
        for (const std::size_t capacity : {std::size_t(20), 22 + size / 2}) {
            LimitedBuffer buffer(capacity);
            std::ostream limited(&buffer);
            EXPECT_THAT(error_of([&] {
                            Ogawa::FileWriter failing(Ogawa::open_output_stream(limited));
                            const auto lost = failing.append_data(8, make_head, {body.data(), body.size()});
                            failing.finish(failing.append_group({lost}));
                        }),
                        StartsWith("Could not write to the given ostream"));
            EXPECT_FALSE(is_marked_complete(buffer.str()));
        }
        if (size < Ogawa::FileWriter::least_body_for_thread) continue;
        const auto fail = [](void*) { throw Exception("no head"); };
        Ogawa::FileWriter headless(Ogawa::open_output_stream(stream));
        EXPECT_EQ(error_of([&] { headless.append_data(8, fail, {body.data(), body.size()}); }), "no head");
        EXPECT_EQ(error_of([&] { headless.check(); }), std::thread::hardware_concurrency() > 1 ? "no head" : "");
    }
}

TEST(FileWriter, AGroupOfEntriesThatComeOneByOneIsTheSameGroup)
{
    for (const std::size_t count : {0, 1, 511, 512, 513, 5000}) {
        std::vector<std::uint64_t> entries(count);
        for (std::size_t i = 0; i < count; ++i)
            entries[i] = i * i;
        std::stringstream stream;
        Ogawa::FileWriter writer(Ogawa::open_output_stream(stream));
        std::size_t next = 0;
        const std::uint64_t group = writer.append_group(count, [&] { return entries[next++]; });
        writer.finish(group);
        const std::string bytes = stream.str();
        ASSERT_EQ(bytes.size(), 16 + (count > 0 ? 8 + 8 * count : 0));
        if (count == 0) continue;
        EXPECT_EQ(number_at(bytes, group), count);
        EXPECT_EQ(std::memcmp(bytes.data() + group + 8, entries.data(), 8 * count), 0) << count;
    }
}

TEST(FileWriter, WithoutFinishAFileIsNotMarkedComplete)
{
    ScratchFile file("open.ogawa");
    Ogawa::FileWriter(Ogawa::open_output_file(file.path())).append_data({{"abc", 3}});
    EXPECT_EQ(file.bytes().size(), 16u);
    EXPECT_FALSE(is_marked_complete(file.bytes()));
}

TEST(FileWriter, TargetsThatCannotBeUsedAreRefusedWithTheReason)
{
    ScratchFile file("pipe");
    EXPECT_EQ(error_of([] { Ogawa::open_output_file("no_such_folder/x.abc"); }),
              "Could not open file: no_such_folder/x.abc");
    EXPECT_EQ(error_of([&] { Ogawa::open_output_file(file.folder()); }),
              "Could not open file: " + file.folder() + " (Is a directory)");
    ASSERT_EQ(mkfifo(file.path().c_str(), 0600), 0);
    EXPECT_THAT(error_of([&] { Ogawa::open_output_file(file.path()); }), StartsWith("Could not open file: "));
    const int reader = open(file.path().c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(error_of([&] { Ogawa::open_output_file(file.path()); }),
              "Could not open file: " + file.path() + " (Illegal seek)");
    close(reader);
    EXPECT_EQ(error_of([] { Ogawa::FileWriter(Ogawa::open_output_file("/dev/full")); }),
              "Could not write file: /dev/full (No space left on device)");

    std::stringstream stream;
    stream.setstate(std::ios::badbit);
    EXPECT_EQ(error_of([&] { Ogawa::open_output_stream(stream); }), "Could not use the given ostream.");
    std::ostream nowhere(nullptr);
    EXPECT_EQ(error_of([&] { Ogawa::open_output_stream(nowhere); }), "Could not use the given ostream.");
    struct Throwing : std::stringbuf
    {
        bool ready = false;
        pos_type seekoff(off_type offset, std::ios::seekdir from, std::ios::openmode mode) override
        {
            if (!ready) throw std::runtime_error("not seekable");
            return std::stringbuf::seekoff(offset, from, mode);
        }
        std::streamsize xsputn(const char*, std::streamsize) override { throw 7; }
    } buffer;
    std::ostream throwing(&buffer);
    throwing.exceptions(std::ios::badbit);
    EXPECT_EQ(error_of([&] { Ogawa::open_output_stream(throwing); }), "Could not use the given ostream.");
    throwing.exceptions(std::ios::goodbit);
    throwing.clear();
    throwing.exceptions(std::ios::badbit);
    buffer.ready = true;
    EXPECT_EQ(error_of([&] { Ogawa::FileWriter(Ogawa::open_output_stream(throwing)); }),
              "Could not write to the given ostream (the stream failed)")
        << "what is thrown need not be a std::exception";
}

TEST(OutputTarget, ManyPartsArriveOneAfterTheOther)
{
    ScratchFile file("parts");
    std::vector<Ogawa::Bytes> parts(40, Ogawa::Bytes{"ab", 2});
    parts[20].size = 0;
    const auto target = Ogawa::open_output_file(file.path());
    target->write(0, parts.data(), parts.size());
    target->close();
    std::string expected;
    for (int i = 0; i < 39; ++i)
        expected += "ab";
    EXPECT_EQ(file.bytes(), expected);
}

TEST(FileWriter, TheFileSizeLimitIsAnErrorThatStays)
{
    ScratchFile file("limited.ogawa");
    Ogawa::FileWriter writer(Ogawa::open_output_file(file.path()));
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit limit = before;
    limit.rlim_cur = 1000000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    const std::string block(100000, 'x');
    int written = 0;
    const std::string error = error_of([&] {
        for (; written < 100; ++written)
            writer.append_data({{block.data(), block.size()}});
    });
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(written, 9);
    EXPECT_EQ(error, "Could not write file: " + file.path() + " (File too large)");
    // There would be room now, but something is missing in the file.
    EXPECT_EQ(error_of([&] { writer.append_group({}); }), error);
    EXPECT_EQ(error_of([&] { writer.finish(0); }), error);
    EXPECT_FALSE(is_marked_complete(file.bytes()));
}

TEST(FileWriter, WhereverAStreamFailsTheFailureIsReportedAndTheContainerStaysIncomplete)
{
    std::stringstream whole;
    Ogawa::FileWriter whole_writer(Ogawa::open_output_stream(whole));
    const RandomContainer all(whole_writer, 3);
    const std::size_t size = whole.str().size();
    for (const bool throwing : {false, true}) {
        for (std::size_t capacity = 0; capacity < size; capacity += 1 + capacity / 3) {
            LimitedBuffer buffer(capacity);
            std::ostream stream(&buffer);
            if (throwing) stream.exceptions(std::ios::badbit | std::ios::failbit);
            EXPECT_THAT(error_of([&] {
                            Ogawa::FileWriter writer(Ogawa::open_output_stream(stream));
                            const RandomContainer cut(writer, 3);
                        }),
                        StartsWith("Could not write to the given ostream"))
                << capacity;
            EXPECT_FALSE(is_marked_complete(buffer.str())) << capacity;
        }
    }
}

TEST(FileWriter, WhatWasGivenUpIsNotCompleted)
{
    ScratchFile file("given_up.ogawa");
    Ogawa::FileWriter writer(Ogawa::open_output_file(file.path()));
    writer.give_up("first reason");
    writer.give_up("second reason");
    EXPECT_EQ(error_of([&] { writer.finish(0); }), "first reason");
    EXPECT_FALSE(is_marked_complete(file.bytes()));

    std::stringstream stream;
    Ogawa::FileWriter other(Ogawa::open_output_stream(stream));
    const Ogawa::Bytes x = {"x", 1};
    const std::string error = "Too many parts for one Ogawa data block";
    EXPECT_EQ(error_of([&] { other.append_data({x, x, x, x, x, x, x, x, x}); }), error);
    EXPECT_EQ(error_of([&] { other.finish(0); }), error);
    EXPECT_FALSE(is_marked_complete(stream.str()));
}
