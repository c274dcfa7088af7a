/// HDF5 files made to be slow: parts that many others lead to are not read as often.
#include "archive_bytes.h"
#include "support/hdf5_archive_copy.h"
#include "support/quiet_errors.h"
#include "support/scratch_file.h"

#include <Alembic/AbcCoreHDF5/All.h>
#include <gmock/gmock.h>

#include <ctime>
#include <fstream>

using namespace vo_test;
using hdf5_archives::Id;
using testing::HasSubstr;

namespace {

const Alembic::AbcCoreHDF5::ReadArchive open_hdf5;
constexpr std::uint64_t nowhere = ~std::uint64_t(0);

/// Stored numbers, one after the other.
class Bytes
{
public:
    template <class Number>
    Bytes& add(Number number)
    {
        bytes_.append(reinterpret_cast<const char*>(&number), sizeof number);
        return *this;
    }
    Bytes& add(const char* text)
    {
        bytes_.append(text);
        return *this;
    }
    const std::string& get() const { return bytes_; }

private:
    std::string bytes_;
};

/// A small archive of groups in the older form, whose links stand in tables, with room for what a test puts there.
class Hdf5Crafted : public testing::Test
{
protected:
    static constexpr std::size_t room_size = 3u << 20;

    /// `children` groups below the top object.
    void write_groups(int children)
    {
        const Id creation(H5Pcreate(H5P_FILE_CREATE), H5Pclose);
        hdf5_archives::check(H5Pset_sym_k(creation, 16, 32767)); // nodes of as many links as can be
        const Id file(H5Fcreate(scratch_.path().c_str(), H5F_ACC_TRUNC, creation, H5P_DEFAULT), H5Fclose);
        const std::int32_t version = -8;
        hdf5_archives::write_attribute(file, "abc_version", H5T_STD_I32LE, H5T_NATIVE_INT32, &version, 1);
        const Id top(H5Gcreate2(file, "ABC", H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT), H5Gclose);
        top_ = place_of(top);
        // Small tables: each group would have its own of the size that the file's creation asks for.
        for (int i = 0; i < children; ++i) {
            const Id type(H5Tcopy(H5T_STD_I8LE), H5Tclose);
            hdf5_archives::check(
                H5Tcommit2(top, std::to_string(i).c_str(), type, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
            children_.push_back(place_of(type));
        }
        const Id space(hdf5_archives::make_space(room_size), H5Sclose);
        const Id room(H5Dcreate2(file, "room", H5T_STD_I8LE, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT), H5Dclose);
        hdf5_archives::check(
            H5Dwrite(room, H5T_NATIVE_INT8, H5S_ALL, H5S_ALL, H5P_DEFAULT, std::string(room_size, 'x').data()));
        room_ = H5Dget_offset(room);
    }

    void patch(std::uint64_t place, const std::string& bytes) const
    {
        std::fstream file(scratch_.path(), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(std::streamoff(place)).write(bytes.data(), std::streamsize(bytes.size()));
        ASSERT_TRUE(file.good());
    }

    /// Puts another message in the place of the first of the header.
    void patch_message(std::uint64_t header, std::uint16_t type, std::uint64_t first, std::uint64_t second) const
    {
        constexpr std::uint64_t prefix = 16;
        patch(header + prefix, Bytes().add(type).add(std::uint16_t(16)).add(0u).add(first).add(second).get());
    }

    /// A tree of as many entries as can be, all of which lead to `node`.
    static std::string tree_of(std::uint64_t node)
    {
        constexpr int count = 65535;
        Bytes tree;
        tree.add("TREE").add(std::uint16_t(0)).add(std::uint16_t(count)).add(nowhere).add(nowhere);
        for (int i = 0; i < count; ++i)
            tree.add(std::uint64_t(0)).add(node);
        return tree.add(std::uint64_t(0)).get();
    }

    /// A node of that many links, all of one name.
    static std::string node_of(std::uint16_t links)
    {
        Bytes node;
        node.add("SNOD").add(std::uint16_t(1)).add(links);
        for (int i = 0; i < links; ++i)
            node.add(std::uint64_t(8)).add(nowhere).add(std::uint64_t(0)).add(std::uint64_t(0)).add(std::uint64_t(0));
        return node.get();
    }

    /// A heap whose one name fills it, but for the first bytes.
    static std::string heap_of(std::uint64_t position, std::uint64_t size)
    {
        constexpr std::uint64_t header = 32, no_free_block = 1;
        std::string names(size, 'n');
        names.back() = '\0';
        return Bytes().add("HEAP").add(0u).add(size).add(no_free_block).add(position + header).get() + names;
    }

    /// Refused, for that reason, or listed as children that cannot be opened: within a time that no file of some
    /// megabytes may exceed.
    void expect_quick_refusal(const char* reason) const
    {
        const std::clock_t start = std::clock(); // of the processor: other programs do not count
        std::string error = error_of([&] {
            const auto archive = open_hdf5(scratch_.path());
            std::string last;
            for (std::size_t i = 0; i < archive->getTop()->getNumChildren(); ++i)
                last = error_of([&] { archive->getTop()->getChild(i); });
            EXPECT_EQ(archive->getTop()->getNumChildren(), children_.size());
            if (!last.empty()) throw std::runtime_error(last);
        });
        EXPECT_THAT(error, HasSubstr(reason));
        EXPECT_LT(double(std::clock() - start) / CLOCKS_PER_SEC, 2.0) << "seconds";
    }

    static std::uint64_t place_of(hid_t object)
    {
        H5O_info_t info;
        hdf5_archives::check(H5Oget_info2(object, &info, H5O_INFO_BASIC));
        return info.addr;
    }

    const QuietErrors quiet_;
    const ScratchFile scratch_{"crafted.abc"};
    std::uint64_t top_ = 0, room_ = 0;
    std::vector<std::uint64_t> children_;
};

constexpr std::uint16_t continuation_message = 0x10, symbol_table_message = 0x11;

} // namespace

TEST_F(Hdf5Crafted, OneNodeOfLinksThatAllEntriesOfATreeLeadTo)
{
    write_groups(0);
    const std::string tree = tree_of(room_ + (2u << 20)), node = node_of(20000);
    patch(room_, tree);
    patch(room_ + (2u << 20), node);
    const std::uint64_t heap = room_ + tree.size();
    patch(heap, heap_of(heap, 16));
    patch_message(top_, symbol_table_message, room_, heap);
    expect_quick_refusal("parts of the file overlap");
}

TEST_F(Hdf5Crafted, OneLongNameThatAllLinksHave)
{
    write_groups(0);
    const std::string node = node_of(65534);
    const std::uint64_t heap = room_, tree = room_ + (1u << 19), place = tree + 64;
    patch(heap, heap_of(heap, 1u << 18));
    patch(tree, Bytes()
                    .add("TREE")
                    .add(std::uint16_t(0))
                    .add(std::uint16_t(1))
                    .add(nowhere)
                    .add(nowhere)
                    .add(std::uint64_t(8))
                    .add(place)
                    .add(std::uint64_t(8))
                    .get());
    patch(place, node.substr(0, room_size - (1u << 19) - 64));
    patch_message(top_, symbol_table_message, tree, heap);
    expect_quick_refusal("parts of the file overlap");
}

TEST_F(Hdf5Crafted, OneContinuationThatAllHeadersHave)
{
    write_groups(5000);
    std::string nothing; // messages to be passed over
    while (nothing.size() + 65536 <= room_size)
        nothing += Bytes().add(std::uint16_t(0)).add(std::uint16_t(65528)).add(0u).get() + std::string(65528, '\0');
    patch(room_, nothing);
    for (const std::uint64_t child : children_)
        patch_message(child, continuation_message, room_, nothing.size());
    expect_quick_refusal("parts of the file overlap");
}

TEST_F(Hdf5Crafted, TwoTablesOfLinksInOneHeader)
{
    write_groups(1);
    // The header's other messages, if it has any, make room.
    const std::string message =
        Bytes().add(symbol_table_message).add(std::uint16_t(16)).add(0u).add(room_).add(room_).get();
    patch(room_, message + message);
    patch_message(top_, continuation_message, room_, 2 * message.size());
    expect_quick_refusal("stands there twice");
}
