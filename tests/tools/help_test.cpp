/// Completion and the manual page say what the help says.
#include "tool_help.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

/// As the manual page writes it.
std::string escape_hyphens(const std::string& text)
{
    std::string escaped;
    for (const char character : text)
        escaped += character == '-' ? "\\-" : std::string(1, character);
    return escaped;
}

/// What bash offers for the last of these words.
std::string complete_in_bash(const std::string& words)
{
    const ScratchFile script("complete.bash"), output("output");
    write_file(script.path(), run_tool({"completion", "bash"}).output + "COMP_WORDS=(" + words +
                                  ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_vo_abc\necho \"${COMPREPLY[@]}\"\n");
    EXPECT_EQ(std::system(("bash -u " + script.path() + " >" + output.path()).c_str()), 0) << words;
    return output.bytes();
}

/// A shell that is there agrees that the script is one.
void expect_syntax(const std::string& shell)
{
    if (std::system(("command -v " + shell + " >/dev/null").c_str()) != 0) return;
    const ScratchFile script("script");
    write_file(script.path(), run_tool({"completion", shell}).output);
    EXPECT_EQ(std::system((shell + " -n " + script.path()).c_str()), 0) << shell;
}

} // namespace

TEST(Help, EveryCommandAndOptionIsInAllForms)
{
    const std::string page = run_tool({"man"}).output;
    std::vector<std::string> scripts;
    for (const char* const shell : {"bash", "zsh", "fish"}) {
        scripts.push_back(run_tool({"completion", shell}).output);
        expect_syntax(shell);
    }
    const std::vector<std::string> commands = list_commands();
    ASSERT_GE(commands.size(), 12u);
    for (const std::string& command : commands) {
        EXPECT_THAT(page, HasSubstr(".SS \"vo_abc " + command)) << command;
        for (const std::string& option : list_long_options(command)) {
            EXPECT_THAT(page, HasSubstr(escape_hyphens(option))) << command;
            EXPECT_THAT(scripts[0], HasSubstr(option)) << command;
            EXPECT_THAT(scripts[1], HasSubstr(option)) << command;
            EXPECT_THAT(scripts[2], HasSubstr("-l " + option.substr(2))) << command;
        }
    }
}

TEST(Help, BashCompletesCommandsOptionsWordsAndArchives)
{
    EXPECT_EQ(complete_in_bash("vo_abc ex"), "export\n");
    EXPECT_EQ(complete_in_bash("vo_abc diff --tol"), "--tolerance\n");
    EXPECT_EQ(complete_in_bash("vo_abc size --by o"), "object\n");
    EXPECT_EQ(complete_in_bash("vo_abc completion ''"), "bash zsh fish\n");
    EXPECT_EQ(complete_in_bash("vo_abc diff --tolerance ''"), "\n");
    const std::string folder = VO_SAMPLES_DIR;
    EXPECT_EQ(complete_in_bash("vo_abc info " + folder + "/show"), folder + "/showcase.abc\n");
}

TEST(Help, TheManualPageIsCleanTroff)
{
    if (std::system("command -v groff >/dev/null") != 0) GTEST_SKIP() << "groff is not installed";
    const ScratchFile page("vo_abc.1"), messages("messages");
    write_file(page.path(), run_tool({"man"}).output);
    EXPECT_EQ(std::system(("groff -man -Tutf8 -ww " + page.path() + " >/dev/null 2>" + messages.path()).c_str()), 0);
    EXPECT_EQ(messages.bytes(), "");
}
