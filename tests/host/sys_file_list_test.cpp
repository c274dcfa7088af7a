/// File lists: validity, text, modification stamps.
#include "vo_sys/sys_file_list.h"

#include <filesystem>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const CoreArray<CoreString> abc_only{"abc"};

/// A folder of its own, gone with the test.
class SysFileListTest : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string pattern = (fs::temp_directory_path() / "file_list_XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
    }
    void TearDown() override { fs::remove_all(folder_); }

    CoreString path(const std::string& name) const { return (folder_ / name).string(); }
    CoreString write(const std::string& name, const std::string& text) const
    {
        std::ofstream(folder_ / name, std::ios::trunc) << text;
        return path(name);
    }
    // The same second for every state; only the nanoseconds tell them apart.
    static void set_time(const CoreString& file, long nanoseconds)
    {
        const timespec times[2] = {{1700000000, nanoseconds}, {1700000000, nanoseconds}};
        ASSERT_EQ(utimensat(AT_FDCWD, file.get_data(), times, 0), 0);
    }

    fs::path folder_;
};

} // namespace

TEST_F(SysFileListTest, IsValidOnlyWhenEveryFileCanBeUsed)
{
    const CoreString good = write("walk.abc", "x"), upper = write("RUN.ABC", "x");
    const CoreString text = write("notes.txt", "x"), bare = write("abc", "x"), hidden = write("walk.abc.bak", "x");
    fs::create_directory(folder_ / "folder.abc");
    fs::create_symlink(folder_ / "walk.abc", folder_ / "link.abc");
    fs::create_symlink(folder_ / "gone", folder_ / "broken.abc");

    EXPECT_FALSE(SysFileList(abc_only).is_valid()) << "no file";
    EXPECT_TRUE(SysFileList(CoreArray<CoreString>{good, upper, path("link.abc")}, abc_only).is_valid());
    EXPECT_EQ(SysFileList(good, abc_only).get_errors('\n'), "");
    EXPECT_TRUE(SysFileList(text, CoreArray<CoreString>()).is_valid()) << "no extension is asked for";
    for (const CoreString& bad : {text, bare, hidden, path("folder.abc"), path("missing.abc"), path("broken.abc"),
                                  CoreString(""), CoreString(good + CoreString("\0.abc", 5))}) {
        EXPECT_FALSE(SysFileList(bad, abc_only).is_valid()) << bad;
        EXPECT_FALSE(SysFileList(CoreArray<CoreString>{good, bad}, abc_only).is_valid()) << bad;
        EXPECT_NE(SysFileList(bad, abc_only).get_errors('\n'), "") << bad;
    }
}

TEST_F(SysFileListTest, AnUnreadableFileIsNotValid)
{
    const CoreString file = write("secret.abc", "x");
    ASSERT_EQ(chmod(file.get_data(), 0), 0);
    ASSERT_EQ(chmod(folder_.c_str(), 0755), 0);
    const bool is_superuser = geteuid() == 0; // who may read everything: somebody else must ask
    if (is_superuser && seteuid(65534) != 0) GTEST_SKIP() << "no other user to be had";
    const CoreString errors = SysFileList(file, abc_only).get_errors('\n');
    if (is_superuser) {
        ASSERT_EQ(seteuid(0), 0);
    }
    EXPECT_EQ(errors, "'" + file + "' cannot be read: Permission denied");
}

TEST_F(SysFileListTest, ErrorsNameEachFileAndItsProblem)
{
    const CoreString good = write("walk.abc", "x"), text = write("notes.txt", "x"), missing = path("missing.abc");
    const SysFileList list(CoreArray<CoreString>{text, good, missing}, abc_only);
    EXPECT_EQ(list.get_errors('\n'), "'" + text + "' has not the extension \"abc\"\n'" + missing + "' does not exist");
}

TEST_F(SysFileListTest, NamesKeepTheirOrderAndAreJoined)
{
    SysFileList list("b.abc", abc_only);
    list.add("a.abc");
    list.add(list.get_file(0)); // one of its own
    EXPECT_EQ(list.join(), "b.abc, a.abc, b.abc");
    EXPECT_EQ(list.join(CoreArray<CoreString>{" + ", " - "}), "b.abc + a.abc - b.abc");
    EXPECT_EQ(SysFileList(CoreString("one.abc"), abc_only).join(), "one.abc");
    EXPECT_EQ(SysFileList().join(), "");

    const SysFileList forward(CoreArray<CoreString>{"a.abc", "b.abc"}, abc_only);
    const SysFileList backward(CoreArray<CoreString>{"b.abc", "a.abc"}, abc_only);
    EXPECT_TRUE(forward != backward);
    EXPECT_TRUE(forward == SysFileList(forward.get_files(), CoreArray<CoreString>()));
    EXPECT_GT(forward.get_memory_size(), sizeof(SysFileList));
    list.clear();
    EXPECT_TRUE(list.is_empty());
    EXPECT_EQ(list.get_extensions(), abc_only);
}

TEST_F(SysFileListTest, AStampChangesWithTimeSizeAndIdentity)
{
    const CoreString file = write("walk.abc", "first");
    const SysFileList list(file, abc_only);
    set_time(file, 100);
    const CoreArray<CoreLong> opened = list.get_modification_times();
    EXPECT_TRUE(list.modification_times_equal_to(opened));
    EXPECT_FALSE(list.modification_times_equal_to(CoreArray<CoreLong>()));

    set_time(file, 101);
    EXPECT_FALSE(list.modification_times_equal_to(opened)) << "rewritten within the second";
    set_time(file, 100);
    EXPECT_TRUE(list.modification_times_equal_to(opened)) << "the stamp depends on nothing else";

    write("walk.abc", "longer than first");
    set_time(file, 100);
    EXPECT_FALSE(list.modification_times_equal_to(opened)) << "another size";

    const CoreString other = write("other.abc", "FIRST");
    set_time(other, 100);
    fs::rename(other.get_data(), file.get_data());
    EXPECT_FALSE(list.modification_times_equal_to(opened)) << "another file of the same size and time";

    fs::remove(file.get_data());
    EXPECT_EQ(list.get_modification_times(), (CoreArray<CoreLong>{0}));
    EXPECT_FALSE(list.modification_times_equal_to(opened)) << "gone";
}
