/// The report on open archives.
#include <support/abc_archives.h>

#include <abc_input_archive_manager.h>
#include <abc_output_archive_handle.h>
#include <gmock/gmock.h>
#include <vo_sys/sys_statistic.h>

using namespace abc_archives;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ArchiveStatistics : public StartedLibrary
{
protected:
    const ScratchFile file_{"square.abc"}, layer_{"layer.abc"};
};

} // namespace

TEST_F(ArchiveStatistics, AnEmptyCacheHasFiveLines)
{
    AbcInput::log_statistics();
    const auto size = SysStatistic::get_readable_size(AbcInputArchiveManager::get()->get_memory_size());
    EXPECT_THAT(log_.take(), ElementsAre("3 *******************************************\n",
                                         "3 *    AbcInputArchiveManager Statistics    *\n",
                                         "3 *******************************************\n",
                                         std::string("3 AbcInputArchiveManager memory size: ") + size.get_data() + "\n",
                                         "3 Open file(s): 0\n"));
}

TEST_F(ArchiveStatistics, EveryArchiveHasSevenLines)
{
    AppBase app("1.2.0");
    AbcOutputArchiveHandle(file_.path(), 1.0 / 24, 0, app).reset();
    write_square_archive(layer_.path());
    const CoreString single(file_.path()), layer(layer_.path());
    const std::unique_ptr<AbcInputArchiveHandle> one(AbcInput::get_archive(AbcFileList(single)));
    const std::unique_ptr<AbcInputArchiveHandle> two(
        AbcInput::get_archive(AbcFileList(CoreArray<CoreString>{single, layer})));
    const unsigned long long empty = sizeof(AbcInputArchiveManager);
    EXPECT_GT(AbcInputArchiveManager::get()->get_memory_size(), empty);

    AbcInput::log_statistics();
    std::vector<std::string> lines = log_.take();
    ASSERT_EQ(lines.size(), 5u + 2 * 7u);
    lines.erase(lines.begin(), lines.begin() + 5);
    EXPECT_EQ(lines[0], "3 1. \"" + file_.path() + "\" (has layers: no)\n");
    EXPECT_EQ(lines[1], "3   - User count: 1\n");
    EXPECT_THAT(lines[2], StartsWith("3   - Archive handle memory size: "));
    EXPECT_THAT(lines[3], StartsWith("3   - Version(s): Alembic "));
    EXPECT_THAT(lines[3], HasSubstr(", API version 10812\n"));
    EXPECT_EQ(lines[4], "3   - App. writter(s): Quendrake Venmoral 1.2.0\n");
    EXPECT_THAT(lines[5], StartsWith("3   - Date(s) written: "));
    EXPECT_EQ(lines[6], "3   - User description(s): \"\"\n");
    EXPECT_EQ(lines[7], "3 2. \"" + file_.path() + ", " + layer_.path() + "\" (has layers: yes)\n");
    AbcInput::release_archive(one.get());
    AbcInput::release_archive(two.get());
}

TEST_F(ArchiveStatistics, AnArchiveWithoutMetadataHasEmptyTexts)
{
    write_square_archive(file_.path());
    const std::unique_ptr<AbcInputArchiveHandle> one(AbcInput::get_archive(AbcFileList(CoreString(file_.path()))));
    AbcInput::log_statistics();
    const std::vector<std::string> lines = log_.take();
    ASSERT_EQ(lines.size(), 12u);
    EXPECT_EQ(lines[9], "3   - App. writter(s): \n");
    EXPECT_EQ(lines[10], "3   - Date(s) written: \n");
    EXPECT_EQ(lines[11], "3   - User description(s): \"\"\n");
    AbcInput::release_archive(one.get());
}
