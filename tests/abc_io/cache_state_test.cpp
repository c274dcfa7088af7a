/// The verification callback: which archives changed, the question, the reload.
#include <support/abc_archives.h>

#include <abc_input_archive_manager.h>
#include <gmock/gmock.h>
#include <vo_of/of_attr.h>
#include <vo_of/of_context.h>
#include <vo_of/of_file_reference_context_engine.h>

#include <filesystem>

using namespace abc_archives;
using testing::ElementsAre;

namespace {

/// An application whose user always gives the same answer.
class AnsweringApp : public AppBase
{
public:
    AppDialog show_question_dialog(const CoreString& message, const CoreString& title, const AppDialog& default_answer,
                                   const int& style, const CoreBasicArray<CoreString>& extra_buttons) override
    {
        questions.push_back(message.get_data());
        EXPECT_EQ(title, "Alembic Resync");
        EXPECT_TRUE(default_answer.is_yes());
        EXPECT_EQ(style, 16);
        EXPECT_TRUE(extra_buttons.is_empty());
        return answer;
    }

    AppDialog answer = AppDialog::no();
    std::vector<std::string> questions;
};

class CacheState : public StartedLibrary
{
protected:
    AppBase* get_application() override { return &app_; }

    void SetUp() override
    {
        StartedLibrary::SetUp();
        write_square_archive(file_.path());
        write_square_archive(layer_.path());
        single_.reset(AbcInput::get_archive(files_));
    }
    void TearDown() override
    {
        AbcInput::release_archive(single_.get());
        StartedLibrary::TearDown();
        EXPECT_TRUE(verify(true)) << "the callback must be gone";
    }

    bool verify(bool interactive) { return app_.verify_state(AppBase::VERIFIABLE_STATE_RESOURCES, interactive); }

    void change(const ScratchFile& file)
    {
        write_square_archive(file.path() + ".new", 2);
        std::filesystem::rename(file.path() + ".new", file.path());
    }

    AnsweringApp app_;
    const ScratchFile file_{"square.abc"}, layer_{"layer.abc"};
    const AbcFileList files_{CoreString(file_.path())};
    std::unique_ptr<AbcInputArchiveHandle> single_;
};

} // namespace

TEST_F(CacheState, NothingChangedNothingAsked)
{
    EXPECT_TRUE(verify(true));
    EXPECT_TRUE(verify(false));
    EXPECT_TRUE(app_.questions.empty());
    EXPECT_FALSE(AbcInputArchiveManager::get()->is_cached_archive_up_to_date(AbcFileList(CoreString("other.abc"))));
}

TEST_F(CacheState, TheQuestionNamesEveryFileAndNoLeavesTheCacheAlone)
{
    const AbcFileList layers(CoreArray<CoreString>{CoreString(file_.path()), CoreString(layer_.path())});
    const std::unique_ptr<AbcInputArchiveHandle> layered(AbcInput::get_archive(layers));
    change(file_);
    EXPECT_FALSE(verify(false));
    EXPECT_TRUE(app_.questions.empty());
    EXPECT_FALSE(verify(true));
    EXPECT_THAT(app_.questions, ElementsAre("The following Alembic file(s) need to be resynced:\n\n" + file_.path() +
                                            "\nLayered archive:\n    - " + file_.path() + "\n    - " + layer_.path() +
                                            "\n\nWould you like to resync them?"));
    EXPECT_TRUE(single_->is_archive_valid());
    EXPECT_EQ(AbcInputArchiveManager::get()->get_invalid_cache_archives().get_count(), 2u);
    AbcInput::release_archive(layered.get());
}

TEST_F(CacheState, YesReloadsVisibleFileAttributesThatNameAChangedFile)
{
    std::vector<std::string> reloaded;
    OfContext plain("plain");
    OfContext read("read", std::make_unique<OfFileReferenceContextEngine>([&] { reloaded.push_back("read"); }));
    OfContext saved("saved", std::make_unique<OfFileReferenceContextEngine>([&] { reloaded.push_back("saved"); }));
    OfContext never("never", std::make_unique<OfFileReferenceContextEngine>([&] { reloaded.push_back("never"); }));
    const CoreArray<CoreString> changed = {CoreString(file_.path())}, unchanged = {CoreString(layer_.path())};
    const OfAttr a("a", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN, &read, changed);
    const OfAttr b("b", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_SAVE, &saved, changed);
    const OfAttr c("c", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FOLDER, &never, changed);
    const OfAttr d("d", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN, &never, unchanged);
    const OfAttr e("e", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN, &plain, changed);
    const OfAttr f("f", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN, nullptr, changed);
    OfAttr hidden("hidden", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN, &never, changed);
    hidden.set_hidden(true);

    change(file_);
    app_.answer = AppDialog::yes();
    EXPECT_TRUE(verify(true));
    EXPECT_THAT(reloaded, testing::UnorderedElementsAre("read", "saved"));
}

TEST_F(CacheState, AReloadMayRemoveTheAttributesBehindIt)
{
    std::unique_ptr<OfAttr> first, second;
    int reloads = 0;
    const auto reload = [&] {
        ++reloads;
        first.reset();
        second.reset();
    };
    OfContext context("context", std::make_unique<OfFileReferenceContextEngine>(reload));
    for (std::unique_ptr<OfAttr>* attr : {&first, &second}) {
        *attr = std::make_unique<OfAttr>("file", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN, &context,
                                         CoreArray<CoreString>{CoreString(file_.path())});
    }
    change(file_);
    app_.answer = AppDialog::yes();
    EXPECT_TRUE(verify(true));
    EXPECT_EQ(reloads, 1);
}
