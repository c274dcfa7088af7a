/// Damaged HDF5 archives: libhdf5 loses memory, or worse, over much that it does not expect. It must not get to see it.
#include "counted_memory.h"
#include "support/archive_walk.h"
#include "support/hdf5_archive_copy.h"
#include "support/hdf5_sealed_blocks.h"
#include "support/scratch_file.h"

#include <Alembic/AbcCoreHDF5/All.h>
#include <Alembic/AbcCoreOgawa/All.h>
#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <set>

using namespace hdf5_archives;

namespace {

class DamagedHdf5 : public testing::Test
{
protected:
    DamagedHdf5()
    {
        const auto archive = Alembic::AbcCoreOgawa::WriteArchive()(ogawa_.path(), AbcA::MetaData());
        const auto top = archive->getTop();
        const auto many = top->createChild(AbcA::ObjectHeader("many", AbcA::MetaData()));
        for (int i = 0; i < 40; ++i) { // more than fit into one node, or one row of blocks
            many->createChild(AbcA::ObjectHeader("child_with_a_long_name_" + std::to_string(i), AbcA::MetaData()));
            const auto number = many->getProperties()->createScalarProperty(
                "number" + std::to_string(i), AbcA::MetaData(), AbcA::DataType(AbcA::kFloat32POD, 3), 0);
            for (const float value : {1.f, 2.f, 3.f})
                number->setSample(std::array<float, 3>{value, 0, float(i)}.data());
        }
        AbcA::MetaData long_one; // more than a heap keeps in its blocks
        long_one.set("text", std::string(6000, 'x'));
        const AbcA::DataType type(AbcA::kInt32POD, 1);
        const auto array = top->getProperties()->createArrayProperty("array", long_one, type, 0);
        const std::vector<std::int32_t> values(300, 7);
        array->setSample(AbcA::ArraySample(values.data(), type, AbcA::Dimensions(values.size())));
    }

    std::string written(Form form) const
    {
        write_copy(*Alembic::AbcCoreOgawa::ReadArchive()(ogawa_.path()), hdf5_.path(), form);
        return hdf5_.bytes();
    }

    /// Reads all that the file has. Whether it opened.
    bool walk() const
    {
        try {
            vo_fuzz::walk_core(Alembic::AbcCoreHDF5::ReadArchive()(hdf5_.path()));
            return true;
        } catch (const std::exception&) {
            return false;
        }
    }

    /// The same with these bytes in the file, twice: the second time leaves nothing behind.
    bool expect_no_loss(const std::string& bytes) const
    {
        std::ofstream(hdf5_.path(), std::ios::binary | std::ios::trunc)
            .write(bytes.data(), std::streamsize(bytes.size()));
        // What libhdf5 keeps for later is given back; what it makes once for the process is there after the first time.
        walk();
        H5garbage_collect();
        const std::size_t before = counted_memory::blocks_in_use();
        const bool opens = walk();
        H5garbage_collect();
        EXPECT_EQ(counted_memory::blocks_in_use(), before);
        return opens;
    }

    /// Why it does not open, and what was wrong on the way through it.
    std::string errors() const
    {
        std::string all;
        try {
            for (const std::string& error :
                 vo_fuzz::walk_core(Alembic::AbcCoreHDF5::ReadArchive()(hdf5_.path())).errors)
                all += error + "\n";
        } catch (const std::exception& error) {
            all += error.what();
        }
        return all;
    }

    const ScratchFile ogawa_{"ogawa.abc"}, hdf5_{"damaged.abc"};
};

/// Other changes come with --gtest_random_seed.
unsigned seed()
{
    return unsigned(GTEST_FLAG_GET(random_seed));
}

/// Bytes that have done harm where they did not belong, and others.
char other_byte(char byte, std::mt19937& random)
{
    const char others[] = {0, 1, 2, char(0xff), char(byte ^ 0x80), char(byte + 1), char(byte - 1), char(random())};
    return others[random() % std::size(others)];
}

} // namespace

TEST_F(DamagedHdf5, RefusesWhatWasFound)
{
    const std::map<std::string, std::string> reasons = {
        {"attribute_message_overread", "Attribute '.inherits.smp0' is damaged: its space is cut"},
        {"ends_before_a_continuation", "A header is damaged: a continuation is lost"},
        {"heap_of_rows_without_blocks", "its blocks have sizes that cannot be"},
        {"heap_of_small_blocks", "its blocks have sizes that cannot be"},
        {"heap_with_a_tree_of_nothing", "its large objects are lost"},
        {"links_that_overlap", "parts of the file overlap"},
        {"single_value_with_an_extent", "its space is unknown"},
        {"tree_of_another_kind", "An index is damaged: it is one of something else"},
        {"tree_of_giant_nodes", "An index is damaged: its nodes have no size that is known"},
        {"tree_of_records_without_bytes", "An index is damaged: it is one of something else"},
        {"two_heaps_of_one_block", "Could not open '/c2': a part of the file has two owners"},
        {"two_trees_of_one_leaf", "Could not open 'ABC': a part of the file has two owners"},
    };
    for (const auto& [name, reason] : reasons) {
        SCOPED_TRACE(name);
        std::ifstream file(VO_CORPUS_DIR "/found/hdf5_" + name + ".abc", std::ios::binary);
        expect_no_loss(std::string(std::istreambuf_iterator<char>(file), {}));
        EXPECT_THAT(errors(), testing::HasSubstr(reason));
    }
}

TEST_F(DamagedHdf5, LosesNothingWhereTheFileSaysItEnds)
{
    const std::string sound = written(Form::USUAL);
    EXPECT_TRUE(expect_no_loss(sound));
    EXPECT_TRUE(expect_no_loss(sound + std::string(1000, 'x'))) << "what follows is not part of it";
    constexpr std::size_t end_place = 40;
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE(i);
        std::string bytes = sound;
        const std::uint64_t end = random() % (sound.size() + 100);
        std::memcpy(&bytes[end_place], &end, sizeof end);
        EXPECT_TRUE(!expect_no_loss(bytes) || end <= sound.size());
    }
}

TEST_F(DamagedHdf5, LosesNothingToBytesThatChanged)
{
    std::mt19937 random(seed());
    const std::string sound = written(Form::DEFLATED);
    int read = 0, refused = 0;
    for (int i = 0; i < 600; ++i) {
        SCOPED_TRACE(i);
        std::string bytes = sound;
        for (unsigned changes = 1 + random() % 3; changes > 0; --changes) {
            const std::size_t place = random() % (random() % 2 == 0 ? 2000 : sound.size());
            bytes[place] = other_byte(bytes[place], random);
        }
        ++(expect_no_loss(bytes) ? read : refused);
    }
    EXPECT_GT(read, 20);
    EXPECT_GT(refused, 20);
}

TEST_F(DamagedHdf5, LosesNothingToChangesUnderARightChecksum)
{
    std::mt19937 random(seed());
    std::set<std::string> signatures;
    for (const Form form : {Form::DENSE, Form::LATEST}) {
        const std::string sound = written(form);
        EXPECT_TRUE(expect_no_loss(sound));
        std::map<std::string, std::vector<SealedBlock>> blocks; // by signature
        for (const SealedBlock& block : find_sealed_blocks(sound))
            blocks[sound.substr(block.start, 4)].push_back(block);
        for (const auto& [signature, of_a_kind] : blocks) {
            signatures.insert(signature);
            for (int i = 0; i < 100; ++i) {
                SCOPED_TRACE(signature + " " + std::to_string(i));
                const SealedBlock& block = of_a_kind[random() % of_a_kind.size()];
                std::string bytes = sound;
                for (unsigned changes = 1 + random() % 2; changes > 0; --changes) {
                    const std::size_t place = block.start + 4 + random() % std::min<std::size_t>(block.size - 4, 150);
                    bytes[place] = other_byte(bytes[place], random);
                }
                seal(bytes, block);
                expect_no_loss(bytes);
            }
        }
    }
    EXPECT_EQ(signatures.size(), 8u) << "there should be some of each kind";
}
