/// The container: its header, groups and data.
#include "memory_source.h"
#include "ogawa/container_reader.h"
#include "ogawa/data_reader.h"
#include "support/container_bytes.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace Alembic::Ogawa;
using vo_test::bytes_of;
using vo_test::ContainerBytes;
using vo_test::MemorySource;

namespace {

using Streams = std::vector<std::istream*>;

std::string refusal(const std::string& bytes)
{
    try {
        ContainerReader container(std::make_unique<MemorySource>(bytes));
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "opened";
}

/// What opening an entry throws, "" when it does not.
template <class Open>
std::string error_of(const Open& open)
{
    try {
        open();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

BlockBuffer buffer_of(const std::string& bytes)
{
    return BlockBuffer(std::make_unique<MemorySource>(bytes));
}

const std::string read_failed = "Ogawa IStreams::read failed.";

} // namespace

TEST(ContainerReader, EveryRefusalOfAHeaderHasItsReason)
{
    const std::string sound = ContainerBytes().finish(0);
    const auto with = [&](std::size_t at, const std::string& bytes) {
        return std::string(sound).replace(at, bytes.size(), bytes);
    };
    EXPECT_EQ(refusal(sound), "opened");
    EXPECT_EQ(refusal(""), "it is empty");
    EXPECT_EQ(refusal("Ogaw"), "it does not start as an Ogawa file does");
    EXPECT_EQ(refusal(with(0, "o")), "it does not start as an Ogawa file does");
    EXPECT_EQ(refusal(sound.substr(0, 15)), "it ends inside its header: was copying it interrupted?");
    EXPECT_EQ(refusal(with(6, std::string("\1\0", 2))), "its container version is 256, only version 1 is known");
    EXPECT_EQ(refusal(with(8, bytes_of(std::uint64_t(5000)))),
              "its root group lies outside the file: was copying it interrupted?");
}

TEST(ContainerReader, OnlyTheFrozenFlagItselfCounts)
{
    for (const int flag : {0x00, 0x01, 0x7f, 0xfe, 0xff}) {
        std::string bytes = ContainerBytes().finish(0);
        bytes[5] = static_cast<char>(flag);
        const ContainerReader container(std::make_unique<MemorySource>(bytes));
        EXPECT_EQ(container.is_frozen(), flag == 0xff) << flag;
    }
}

TEST(ContainerReader, StreamsMustHoldTheSameFile)
{
    std::istringstream one(ContainerBytes().finish(0));
    std::istringstream same(ContainerBytes().finish(0));
    EXPECT_TRUE(open_container(Streams{&one, &same}).is_frozen());
    std::istringstream first(ContainerBytes().finish(0));
    std::istringstream other(ContainerBytes().finish(1));
    EXPECT_EQ(error_of([&] { open_container(Streams{&first, &other}); }), "the streams hold different files");
    std::istringstream tiny("Oga");
    EXPECT_EQ(error_of([&] { open_container(Streams{&tiny}); }), "it does not start as an Ogawa file does");
}

TEST(GroupReader, ChildrenAreFoundWithTheirKind)
{
    ContainerBytes bytes;
    const std::uint64_t data = bytes.data("payload");
    const std::uint64_t inner = bytes.group({data, 0, vo_test::data_entry_bit});
    const BlockBuffer file = buffer_of(bytes.finish(inner));
    const GroupReader group(file, inner);
    ASSERT_TRUE(group);
    ASSERT_EQ(group.count(), 3u);
    EXPECT_TRUE(group.is_data(0) && group.is_group(1) && group.is_data(2));
    EXPECT_FALSE(group.is_data(3) || group.is_group(3));
    EXPECT_FALSE(group.child(0)) << "data is no group";
    EXPECT_TRUE(group.child(1)) << "the empty group is a group";
    EXPECT_EQ(group.child(1).count(), 0u);
    EXPECT_FALSE(group.child(3));

    char text[7];
    const DataReader payload(file, group, 0);
    ASSERT_EQ(payload.size(), 7u);
    payload.read(0, text, 7);
    EXPECT_EQ(std::string(text, 7), "payload");
    EXPECT_EQ(error_of([&] { payload.read(1, text, 7); }), read_failed);
    EXPECT_EQ(error_of([&] { payload.read(~0ull, text, 2); }), read_failed);
    EXPECT_FALSE(DataReader(file, group, 1)) << "a group is no data";
    EXPECT_FALSE(DataReader(file, group, 3));
    EXPECT_TRUE(DataReader(file, group, 2)) << "empty data is data";
    EXPECT_EQ(DataReader(file, group, 2).size(), 0u);
}

TEST(GroupReader, AGroupThatIsItsOwnChildIsNone)
{
    ContainerBytes bytes;
    const std::uint64_t self = bytes.end();
    bytes.group({self});
    const BlockBuffer file = buffer_of(bytes.finish(self));
    EXPECT_FALSE(GroupReader(file, self).child(0));
}

TEST(GroupReader, CountsAndPositionsAreCheckedAgainstTheFile)
{
    const auto open = [](std::uint64_t count, std::uint64_t entries, std::uint64_t position) {
        ContainerBytes bytes;
        bytes.append(bytes_of(count) + std::string(entries * 8, '\0'));
        const BlockBuffer file = buffer_of(bytes.finish(0));
        return GroupReader(file, position);
    };
    EXPECT_EQ(open(4, 4, 16).count(), 4u);
    EXPECT_EQ(open(0, 4, 16).count(), 0u) << "a stored count of 0";
    EXPECT_EQ(open(1000, 4, 16).count(), 0u) << "more entries than any file of this size holds";
    EXPECT_EQ(open(~0ull, 4, 16).count(), 0u);
    EXPECT_EQ(error_of([&] { open(5, 4, 16); }), read_failed) << "the last entry is cut off";
    EXPECT_EQ(error_of([&] { open(4, 4, 49); }), read_failed) << "the count is cut off";
    EXPECT_EQ(error_of([&] { open(4, 4, 0x7fffffffffffffff); }), read_failed);
    for (const std::uint64_t position : {1, 8, 9, 15})
        EXPECT_FALSE(open(4, 4, position)) << "blocks never overlap the header: " << position;
}

TEST(DataReader, SizesAndPositionsAreCheckedAgainstTheFile)
{
    const auto open = [](std::uint64_t size, std::uint64_t position) {
        ContainerBytes bytes;
        bytes.append(bytes_of(size) + std::string(32, 'x'));
        const BlockBuffer file = buffer_of(bytes.finish(0));
        return DataReader(file, Entry(vo_test::data_entry_bit | position));
    };
    EXPECT_EQ(open(32, 16).size(), 32u);
    EXPECT_EQ(open(0, 16).size(), 0u);
    EXPECT_EQ(error_of([&] { open(33, 16); }), read_failed) << "the last byte is cut off";
    EXPECT_EQ(error_of([&] { open(57, 16); }), "Ogawa IData illegal size.");
    EXPECT_EQ(error_of([&] { open(~0ull, 16); }), "Ogawa IData illegal size.");
    EXPECT_EQ(error_of([&] { open(1, 49); }), read_failed) << "the size is cut off";
    EXPECT_EQ(error_of([&] { open(1, 0x7fffffffffffffff); }), read_failed);
    for (const std::uint64_t position : {1, 15})
        EXPECT_FALSE(open(32, position));
}
