/// Damaged HDF5 archives: cut, or with bits flipped.
#include "archive_bytes.h"
#include "hdf5_random_archive.h"
#include "support/archive_text.h"
#include "support/quiet_errors.h"
#include "support/scratch_file.h"

#include <Alembic/AbcCoreHDF5/All.h>
#include <gmock/gmock.h>

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <random>

using namespace vo_test;
using hdf5_archives::Form;

namespace {

const Alembic::AbcCoreHDF5::ReadArchive open_hdf5;

class Hdf5Damage : public testing::Test
{
protected:
    void write(const std::string& bytes) const
    {
        std::ofstream(scratch_.path(), std::ios::binary | std::ios::trunc)
            .write(bytes.data(), std::streamsize(bytes.size()));
    }

    static std::string bytes_of_file(const std::string& path)
    {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    const QuietErrors quiet_;
    const ScratchFile scratch_{"damaged.abc"};
    const std::string sound_ = bytes_of_file(RandomArchive(scratch_.folder(), {5, false, 6}, Form::DEFLATED).hdf5);
};

} // namespace

TEST_F(Hdf5Damage, ACutFileIsRefusedWhereverItIsCut)
{
    write(sound_);
    ASSERT_EQ(error_of([&] { archive_text(*open_hdf5(scratch_.path())); }), "");
    constexpr std::size_t margin = 2048; // at both ends every length, between them some
    for (std::size_t size = sound_.size(); size > 0;) {
        size -= size <= margin || size > sound_.size() - margin ? 1 : 13;
        ASSERT_EQ(truncate(scratch_.path().c_str(), off_t(size)), 0);
        EXPECT_NE(error_of([&] { open_hdf5(scratch_.path()); }), "") << "cut at " << size << " of " << sound_.size();
    }
}

TEST_F(Hdf5Damage, FlippedBitsCostAnErrorAtMost)
{
    // Others come with --gtest_random_seed.
    const auto first = unsigned(GTEST_FLAG_GET(random_seed)) * 1000;
    int read = 0, refused = 0;
    for (unsigned seed = first; seed < first + 1000; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::string bytes = sound_;
        for (unsigned flips = seed % 3 == 0 ? 4 : 1; flips > 0; --flips)
            bytes[random() % bytes.size()] ^= char(1 << random() % 8);
        write(bytes);
        const bool failed = !error_of([&] { archive_text(*open_hdf5(scratch_.path())); }).empty();
        ++(failed ? refused : read);
    }
    EXPECT_GT(refused, 60);
    EXPECT_GT(read, 60) << "most bits are those of values";
}

TEST_F(Hdf5Damage, AChunkIsNoLargerThanWhatItUnfoldsInto)
{
    constexpr std::size_t size_place = 24; // in a tree of chunks: that of its first
    constexpr std::size_t end_place = 40;  // in the file: where it ends
    std::size_t count = 0;
    for (std::size_t at = sound_.find("TREE\1"); at != sound_.npos; at = sound_.find("TREE\1", at + 1)) {
        std::string bytes = sound_;
        bytes.append(1u << 20, '\0');
        const std::uint64_t end = bytes.size();
        bytes.replace(end_place, sizeof end, reinterpret_cast<const char*>(&end), sizeof end);
        bytes[at + size_place + 2] = 8; // half a megabyte more
        write(bytes);
        EXPECT_THAT(error_of([&] { archive_text(*open_hdf5(scratch_.path())); }),
                    testing::HasSubstr("a chunk is damaged"));
        if (++count == 3) break;
    }
    EXPECT_EQ(count, 3u);
}

TEST_F(Hdf5Damage, AFewStoredBytesAskForNoMoreStringsThanAllOfThemCouldHold)
{
    const std::string ogawa = scratch_.folder() + "/texts.abc";
    {
        const std::vector<std::string> texts(2'200'000);
        const auto archive = Alembic::AbcCoreOgawa::WriteArchive()(ogawa, AbcA::MetaData());
        const AbcA::DataType type(AbcA::kStringPOD, 1);
        archive->getTop()
            ->getProperties()
            ->createArrayProperty("texts", AbcA::MetaData(), type, 0)
            ->setSample(AbcA::ArraySample(texts.data(), type, AbcA::Dimensions(texts.size())));
    }
    for (const bool deflated : {false, true}) {
        hdf5_archives::write_copy(*Alembic::AbcCoreOgawa::ReadArchive()(ogawa), scratch_.path(),
                                  deflated ? Form::DEFLATED : Form::USUAL);
        AbcA::ArraySamplePtr sample;
        const std::string error = error_of([&] {
            open_hdf5(scratch_.path())->getTop()->getProperties()->getArrayProperty("texts")->getSample(0, sample);
        });
        EXPECT_EQ(sample != nullptr, !deflated) << error;
        EXPECT_EQ(error.find("too many for a file of") != error.npos, deflated) << error;
    }
}

TEST_F(Hdf5Damage, AFileCutWhileItIsOpenCostsAnError)
{
    write(sound_);
    const auto archive = open_hdf5(scratch_.path());
    ASSERT_EQ(truncate(scratch_.path().c_str(), 1000), 0);
    EXPECT_NE(error_of([&] { archive_text(*archive); }), "");
}
