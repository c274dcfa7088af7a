/// vo_abc convert: HDF5 archives become the Ogawa archives that hold the same.
#include "tool_runner.h"

#include <support/archive_text.h>
#include <support/hdf5_archive_copy.h>
#include <support/random_archive.h>

#include <Alembic/AbcCoreOgawa/All.h>
#include <gmock/gmock.h>

using namespace vo_test;

TEST(Hdf5Convert, GivesTheSameAsTheOgawaArchive)
{
    const Alembic::AbcCoreOgawa::ReadArchive open_ogawa;
    for (unsigned seed = 1; seed <= 6; ++seed) {
        const ScratchFile ogawa("ogawa.abc"), hdf5("hdf5.abc"), out("out.abc");
        write_random_archive(ogawa.path(), {seed});
        hdf5_archives::write_copy(*open_ogawa(ogawa.path()), hdf5.path(), hdf5_archives::Form(seed % 4));
        const ToolRun run = run_tool({"convert", hdf5.path(), "-o", out.path()});
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_THAT(run.errors, testing::HasSubstr("HDF5 format is deprecated"));
        EXPECT_EQ(archive_text(*open_ogawa(out.path())), archive_text(*open_ogawa(ogawa.path()))) << "seed " << seed;
    }
}

TEST(Hdf5Convert, NamesTheWideStringsThatAnOgawaArchiveTakesForOthers)
{
    const ScratchFile ogawa("ogawa.abc"), hdf5("hdf5.abc"), out("out.abc");
    {
        namespace AbcA = Alembic::AbcCoreAbstract;
        const auto archive = Alembic::AbcCoreOgawa::WriteArchive()(ogawa.path(), AbcA::MetaData());
        const auto property = archive->getTop()->getProperties()->createScalarProperty(
            "wide", AbcA::MetaData(), AbcA::DataType(AbcA::kWstringPOD, 1), 0);
        for (const std::wstring text : {L"abcd", L"zzze"})
            property->setSample(&text);
    }
    hdf5_archives::write_copy(*Alembic::AbcCoreOgawa::ReadArchive()(ogawa.path()), hdf5.path());
    EXPECT_THAT(run_tool({"convert", hdf5.path(), "-o", out.path()}).errors, testing::Not(testing::HasSubstr("wide")));

    // The HDF5 archive now holds "abcd" and "abce"; an Ogawa archive only tells them apart by their first character.
    std::string bytes = hdf5.bytes();
    const std::size_t place = bytes.find(std::string("z\0\0\0z\0\0\0z\0\0\0e", 13));
    ASSERT_NE(place, bytes.npos);
    for (const int i : {0, 1, 2})
        bytes[place + std::size_t(i) * 4] = char('a' + i);
    write_file(hdf5.path(), bytes);
    const ToolRun run = run_tool({"convert", hdf5.path(), "-o", out.path()});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.errors, testing::HasSubstr(out.path() + ": / property wide: 1 sample of wide strings"));

    const ToolRun in_place = run_tool({"convert", hdf5.path(), "-o", hdf5.path()});
    EXPECT_EQ(in_place.status, 1);
    EXPECT_THAT(in_place.errors, testing::HasSubstr("not written over"));
    EXPECT_EQ(hdf5.bytes(), bytes);
}
