/// Verification callbacks, questions, progress bars.
#include "vo_app_base/app_base.h"
#include "vo_app_base/app_progress_bar.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

int calls = 0;
bool last_interactive = false;

bool refuse(bool interactive)
{
    ++calls;
    last_interactive = interactive;
    return false;
}

// A terminal of our own: what is written to the returned stream can be read from `master`.
std::FILE* open_terminal(int& master)
{
    master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) return nullptr;
    return std::fopen(ptsname(master), "w");
}

} // namespace

TEST(AppBase, CallsTheCallbackOfAState)
{
    AppBase application("1.2.0");
    EXPECT_EQ(application.get_version_name(), "1.2.0");
    EXPECT_TRUE(application.verify_state(AppBase::VERIFIABLE_STATE_RESOURCES, true)) << "nobody objects";
    application.register_verification_callback_for_state(AppBase::VerifiableState(0), &refuse);
    calls = 0;
    EXPECT_FALSE(application.verify_state(AppBase::VERIFIABLE_STATE_RESOURCES, true));
    EXPECT_TRUE(calls == 1 && last_interactive);
    EXPECT_FALSE(application.verify_state(AppBase::VERIFIABLE_STATE_RESOURCES, false));
    EXPECT_TRUE(calls == 2 && !last_interactive);
    application.register_verification_callback_for_state(AppBase::VERIFIABLE_STATE_RESOURCES, nullptr);
    EXPECT_TRUE(application.verify_state(AppBase::VERIFIABLE_STATE_RESOURCES, true));
    EXPECT_EQ(calls, 2);
}

TEST(AppBase, WithoutAUserTheDefaultAnswerHolds)
{
    AppBase application;
    const CoreArray<CoreString> no_buttons;
    EXPECT_TRUE(application.show_question_dialog("?", "title", AppDialog::yes(), 16, no_buttons).is_yes());
    EXPECT_TRUE(application.show_question_dialog("?", "title", AppDialog::no(), 16, no_buttons).is_no());
    EXPECT_FALSE(AppDialog(2).is_yes() || AppDialog(2).is_no());
}

TEST(AppProgressBar, KeepsItsValueBetweenZeroAndOne)
{
    AppProgressBar bar("", nullptr);
    bar.set_value(0.25f);
    EXPECT_EQ(bar.get_value(), 0.25f);
    bar.set_value(std::nanf(""));
    EXPECT_EQ(bar.get_value(), 0.25f);
    bar.set_value(7.0f);
    EXPECT_EQ(bar.get_value(), 1.0f);
    bar.step(1);
    EXPECT_EQ(bar.get_value(), 1.0f) << "no step count";
    bar.set_step_count(4);
    bar.step(3);
    EXPECT_EQ(bar.get_value(), 0.75f);
}

TEST(AppProgressBar, IsSilentInAFile)
{
    std::FILE* const file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    {
        AppProgressBar bar("Loading", file);
        bar.set_value(0.5f);
    }
    EXPECT_EQ(std::ftell(file), 0);
    std::fclose(file);
}

TEST(AppProgressBar, DrawsOnATerminal)
{
    int master = -1;
    std::FILE* const terminal = open_terminal(master);
    if (!terminal) GTEST_SKIP() << "no pseudo terminal to be had";
    {
        AppProgressBar bar("Loading", terminal);
        bar.set_value(0.5f);
    }
    char text[256];
    const ssize_t count = read(master, text, sizeof(text));
    ASSERT_GT(count, 0);
    EXPECT_NE(std::string(text, count).find("Loading [####################....................]  50%"),
              std::string::npos);
    std::fclose(terminal);
    close(master);
}
