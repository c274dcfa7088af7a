/// AbcOutputArchiveHandle: what a new archive holds, and what is said when there is none.
#include <support/abc_archives.h>

#include <abc_output_archive_handle.h>
#include <gmock/gmock.h>

#include <filesystem>

using namespace abc_archives;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class OutputArchive : public testing::Test
{
protected:
    CapturedLog log_;
    AppBase app_{"1.2.0"};
    const ScratchFile file_{"out.abc"};
};

} // namespace

TEST_F(OutputArchive, HoldsTheApplicationAndOneSampling)
{
    {
        AbcOutputArchiveHandle handle(file_.path(), 1.0 / 24, 2.0, app_);
        EXPECT_TRUE(handle.is_valid());
        EXPECT_EQ(handle.get_time_sampling_index(), 1u);
        EXPECT_TRUE(handle.get_error_log().is_empty());
        const AbcOutputArchiveHandle copy = handle;
        EXPECT_TRUE(copy.is_valid());
        EXPECT_EQ(copy.get_time_sampling_index(), 1u);
        add_square(handle.getTop(), "shape");
        handle.reset();
        EXPECT_FALSE(handle.is_valid());
        EXPECT_EQ(handle.get_time_sampling_index(), 0u);
        EXPECT_TRUE(copy.is_valid());
    }
    AbcG::IArchive archive(Alembic::AbcCoreOgawa::ReadArchive(), file_.path());
    const AbcG::MetaData& metadata = archive.getTop().getMetaData();
    EXPECT_EQ(metadata.get("_ai_Application"), "Quendrake Venmoral 1.2.0");
    EXPECT_EQ(metadata.get("_ai_Description"), "");
    EXPECT_FALSE(metadata.get("_ai_DateWritten").empty());
    ASSERT_EQ(archive.getNumTimeSamplings(), 2u);
    EXPECT_EQ(*archive.getTimeSampling(1), AbcG::TimeSampling(1.0 / 24, 2.0));
    EXPECT_TRUE(archive.getTop().getChild("shape").valid());
    EXPECT_THAT(log_.take(), ElementsAre());
}

TEST_F(OutputArchive, TheDefaultSamplingIsNotAddedTwice)
{
    AbcOutputArchiveHandle handle(file_.path(), 1.0, 0.0, app_);
    EXPECT_TRUE(handle.is_valid());
    EXPECT_EQ(handle.get_time_sampling_index(), 0u);
}

TEST_F(OutputArchive, AnEmptyNameIsRefused)
{
    AbcOutputArchiveHandle handle("", 1.0 / 24, 0.0, app_);
    EXPECT_FALSE(handle.is_valid());
    EXPECT_TRUE(handle.get_error_log().is_empty());
    EXPECT_EQ(handle.get_time_sampling_index(), 0u);
    EXPECT_THAT(log_.take(), ElementsAre("1 Failed to create the Alembic output file: filename is empty.\n"));
}

TEST_F(OutputArchive, APathThatCannotBeWrittenIsReported)
{
    const std::string path = file_.folder() + "/absent/out.abc";
    AbcOutputArchiveHandle handle(path, 1.0 / 24, 0.0, app_);
    EXPECT_FALSE(handle.is_valid());
    EXPECT_EQ(handle.get_time_sampling_index(), 0u);
    const std::string error_log = handle.get_error_log().get_data();
    EXPECT_THAT(error_log, HasSubstr(path));
    EXPECT_THAT(log_.take(), ElementsAre("1 Failed to create the output Alembic file '" + path + "'.\n",
                                         "1 Alembic error log:\n" + error_log));
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(OutputArchive, ABadSamplingIsReportedAndLeavesTheOldFile)
{
    write_square_archive(file_.path());
    const auto size = std::filesystem::file_size(file_.path());
    AbcOutputArchiveHandle handle(file_.path(), 0.0, 0.0, app_);
    EXPECT_FALSE(handle.is_valid());
    EXPECT_THAT(log_.take(), ElementsAre(StartsWith("1 Failed to create the output Alembic file '"),
                                         HasSubstr("Time per cycle must be greater than 0")));
    EXPECT_EQ(std::filesystem::file_size(file_.path()), size);
}

TEST_F(OutputArchive, AFullDiskNeverLooksLikeAWholeArchive)
{
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
    AbcOutputArchiveHandle handle("/dev/full", 1.0 / 24, 0.0, app_);
    if (handle.is_valid()) add_square(handle.getTop(), "shape"); // what is not written yet may still be in memory
    handle.reset();
    EXPECT_FALSE(handle.is_valid());
    EXPECT_EQ(handle.get_time_sampling_index(), 0u);
}
