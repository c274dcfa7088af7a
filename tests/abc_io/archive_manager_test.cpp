/// AbcInputArchiveManager: sharing, user counts, stale archives, messages.
#include <support/abc_archives.h>

#include <abc_input_archive_manager.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

using namespace abc_archives;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

using HandlePtr = std::unique_ptr<AbcInputArchiveHandle>;

HandlePtr open(const AbcFileList& files)
{
    return HandlePtr(AbcInput::get_archive(files));
}

void release(HandlePtr& handle)
{
    AbcInput::release_archive(handle.get());
    handle.reset();
}

/// The size of the square in the handle's archive.
float square_size(const AbcInputArchiveHandle& handle)
{
    const AbcG::IObject top = static_cast<AbcG::IArchive*>(handle.get_archive())->getTop();
    const AbcG::IPolyMesh mesh(top.getChild("body"), "shape");
    return (*mesh.getSchema().getValue().getPositions())[2].x;
}

class ArchiveManager : public StartedLibrary
{
protected:
    /// The line of the report that tells the users of the archive with this number; empty when there is none.
    std::string user_line(unsigned int number)
    {
        AbcInput::log_statistics();
        const std::vector<std::string> lines = log_.take();
        const std::size_t index = 5 + (number - 1) * 7 + 1;
        return index < lines.size() ? lines[index] : "";
    }

    const ScratchFile file_{"square.abc"};
    const AbcFileList files_{CoreString(file_.path())};
};

} // namespace

TEST_F(ArchiveManager, EqualListsShareOneArchiveUntilTheLastUserGoes)
{
    write_square_archive(file_.path());
    HandlePtr first = open(files_), second = open(AbcFileList(CoreString(file_.path())));
    EXPECT_NE(first, second);
    EXPECT_TRUE(first->is_archive_valid());
    EXPECT_EQ(first->get_archive(), second->get_archive());
    EXPECT_EQ(user_line(1), "3   - User count: 2\n");

    AbcInput::release_archive(first.get());
    EXPECT_FALSE(first->is_archive_valid());
    AbcInput::release_archive(first.get()); // a second time: nothing
    EXPECT_EQ(user_line(1), "3   - User count: 1\n");
    EXPECT_TRUE(second->is_archive_valid());
    release(second);
    EXPECT_EQ(user_line(1), "");
    AbcInput::release_archive(nullptr);
}

TEST_F(ArchiveManager, AnotherOrderIsAnotherArchive)
{
    const ScratchFile other("other.abc");
    write_square_archive(file_.path());
    write_square_archive(other.path(), 2);
    const CoreString a(file_.path()), b(other.path());
    HandlePtr ab = open(AbcFileList(CoreArray<CoreString>{a, b})), ba = open(AbcFileList(CoreArray<CoreString>{b, a}));
    ASSERT_TRUE(ab->is_archive_valid());
    ASSERT_TRUE(ba->is_archive_valid());
    EXPECT_NE(ab->get_archive(), ba->get_archive());
    EXPECT_EQ(square_size(*ab), 2.0f); // the last file of the list is the strongest layer
    EXPECT_EQ(square_size(*ba), 1.0f);
    release(ab);
    release(ba);
}

TEST_F(ArchiveManager, AListThatIsNotValidIsReported)
{
    HandlePtr handle = open(files_);
    ASSERT_NE(handle, nullptr);
    EXPECT_FALSE(handle->is_archive_valid());
    EXPECT_TRUE(handle->get_filenames().is_empty());
    EXPECT_FALSE(AbcInput::is_archive_valid(files_));
    release(handle);
    EXPECT_THAT(log_.take(), ElementsAre("2 Invalid Alembic file list: [" + file_.path() + "].\n" +
                                         files_.get_errors('\n').get_data() + "\n"));
}

TEST_F(ArchiveManager, AFileThatIsNoArchiveIsReportedAndTriedAgain)
{
    std::ofstream(file_.path()) << "this is not an archive";
    HandlePtr handle = open(files_);
    EXPECT_FALSE(handle->is_archive_valid());
    EXPECT_EQ(handle->get_filenames(), files_);
    const std::vector<std::string> messages = log_.take();
    ASSERT_GE(messages.size(), 1u);
    EXPECT_EQ(messages[0], "1 Failed to load Alembic file(s) '" + file_.path() + "': one or more files are invalid.\n");
    if (messages.size() > 1) { // where Alembic keeps one
        EXPECT_THAT(messages[1], StartsWith("1 Alembic error log:\n"));
    }
    EXPECT_LE(messages.size(), 2u);
    release(handle);
    EXPECT_FALSE(AbcInput::is_archive_valid(files_));

    write_square_archive(file_.path());
    EXPECT_TRUE(AbcInput::is_archive_valid(files_));
    handle = open(files_);
    EXPECT_TRUE(handle->is_archive_valid());
    EXPECT_TRUE(AbcInput::is_archive_valid(files_));
    release(handle);
}

TEST_F(ArchiveManager, MessagesAboveTheLevelAreNotSent)
{
    log_.set_level(0);
    HandlePtr handle = open(files_);
    release(handle);
    AbcInput::log_statistics();
    EXPECT_THAT(log_.take(), ElementsAre());
    log_.set_level(3);
}

TEST_F(ArchiveManager, ARewrittenFileIsOpenedAfreshAndOlderHandlesLoseIt)
{
    for (const bool renamed_over : {false, true}) {
        write_square_archive(file_.path(), 1);
        HandlePtr old = open(files_);
        std::vector<bool> answers;
        auto* const deleted = open(files_).release();
        deleted->set_archive_invalidation_block([&] {
            answers.push_back(true);
            return true;
        });
        HandlePtr kept = open(files_);
        kept->set_archive_invalidation_block([&] {
            answers.push_back(false);
            return false;
        });
        ASSERT_TRUE(old->is_archive_valid());

        // Within the same second, and of the same size.
        const std::string written = renamed_over ? file_.path() + ".new" : file_.path();
        write_square_archive(written, 2);
        if (renamed_over) std::filesystem::rename(written, file_.path());
        EXPECT_FALSE(AbcInputArchiveManager::get()->is_cached_archive_up_to_date(files_));

        HandlePtr fresh = open(files_);
        EXPECT_TRUE(fresh->is_archive_valid());
        EXPECT_FALSE(old->is_archive_valid());
        EXPECT_FALSE(kept->is_archive_valid());
        EXPECT_EQ(answers, (std::vector<bool>{true, false})); // in the order of opening; the first is deleted by now
        EXPECT_TRUE(AbcInputArchiveManager::get()->is_cached_archive_up_to_date(files_));
        EXPECT_EQ(user_line(1), "3   - User count: 1\n");
        release(old);
        release(kept);
        EXPECT_EQ(user_line(1), "3   - User count: 1\n");
        release(fresh);
    }
}

TEST_F(ArchiveManager, AnInvalidatedObjectLivesOnForWhoeverUsesIt)
{
    write_square_archive(file_.path(), 1);
    HandlePtr old = open(files_);
    const AbcInputArchiveHandle copy = *old;
    CoreArray<GMathVec3<float>> positions;
    {
        const auto share = std::static_pointer_cast<AbcG::IArchive>(old->share_archive());
        write_square_archive(file_.path() + ".new", 2);
        std::filesystem::rename(file_.path() + ".new", file_.path());
        HandlePtr fresh = open(files_);
        EXPECT_FALSE(old->is_archive_valid());
        EXPECT_TRUE(copy.is_archive_valid());
        AbcG::IPolyMesh mesh(share->getTop().getChild("body"), "shape");
        EXPECT_EQ((*mesh.getSchema().getValue().getPositions())[2].x, 1.0f);
        // Giving back a copy of a stale handle takes no user from the new archive.
        AbcInputArchiveHandle stale = copy;
        AbcInput::release_archive(&stale);
        EXPECT_FALSE(stale.is_archive_valid());
        EXPECT_EQ(user_line(1), "3   - User count: 1\n");
        release(fresh);
    }
    release(old);
}

TEST_F(ArchiveManager, ADeletedFileLeavesTheOpenArchiveToItsUsers)
{
    write_square_archive(file_.path());
    HandlePtr handle = open(files_);
    std::filesystem::remove(file_.path());
    HandlePtr late = open(files_);
    EXPECT_FALSE(late->is_archive_valid());
    EXPECT_TRUE(handle->is_archive_valid());
    EXPECT_THAT(log_.take(), ElementsAre(StartsWith("2 Invalid Alembic file list: [")));
    release(late);
    release(handle);
}

TEST_F(ArchiveManager, AStaleFileThatNoLongerOpensStillInvalidatesItsHandles)
{
    write_square_archive(file_.path());
    HandlePtr first = open(files_), old = open(files_);
    first->set_archive_invalidation_block([]() -> bool { throw 1; }); // these fail, and nothing else does
    old->set_archive_invalidation_block(std::function<bool()>());     // without target
    std::ofstream(file_.path(), std::ios::trunc) << "half an archive";
    HandlePtr fresh = open(files_);
    EXPECT_FALSE(fresh->is_archive_valid());
    EXPECT_FALSE(first->is_archive_valid());
    EXPECT_FALSE(old->is_archive_valid());
    const std::vector<std::string> messages = log_.take();
    EXPECT_THAT(messages, Contains(StartsWith("1 Failed to load Alembic file(s) '")));
    EXPECT_THAT(messages, Contains(StartsWith("1 An invalidation block of the Alembic file(s) '")).Times(2));
    EXPECT_EQ(user_line(1), "");
    release(first);
    release(old);
    release(fresh);
}

TEST_F(ArchiveManager, AHandleMayMoveAndMayBeDeletedWithoutBeingReleased)
{
    write_square_archive(file_.path());
    HandlePtr handle = open(files_);
    AbcInputArchiveHandle moved(std::move(*handle));
    handle.reset();
    open(files_).reset(); // its user stays counted, but nobody will look for the handle
    write_square_archive(file_.path() + ".new", 2);
    std::filesystem::rename(file_.path() + ".new", file_.path());
    HandlePtr fresh = open(files_);
    EXPECT_FALSE(moved.is_archive_valid());
    release(fresh);
}

TEST_F(ArchiveManager, LifeAndDeathAreReported)
{
    AbcInputArchiveManager* const manager = AbcInputArchiveManager::get();
    AbcInput::init(nullptr);
    EXPECT_THAT(log_.take(),
                ElementsAre("2 Alembic initialization failed: cannot create a new AbcInputArchiveManager instance. The "
                            "application is probably crashing or crashed already.\n"));
    EXPECT_EQ(AbcInputArchiveManager::get(), manager);

    write_square_archive(file_.path());
    HandlePtr handle = open(files_);
    AbcInput::destroy();
    EXPECT_EQ(AbcInputArchiveManager::get(), manager); // left as it was
    AbcInput::destroy();
    EXPECT_THAT(log_.take(), ElementsAre("1 Cannot destroy AbcInputArchiveManager instance: there is none.\n"));

    // Late calls do no harm.
    EXPECT_TRUE(handle->is_archive_valid());
    HandlePtr late = open(files_);
    EXPECT_FALSE(late->is_archive_valid());
    EXPECT_THAT(log_.take(), ElementsAre(HasSubstr("Call AbcInput::init first.")));
    release(late);
    release(handle);
    AbcInput::init(nullptr);
}
