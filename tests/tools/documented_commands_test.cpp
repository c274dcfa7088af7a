/// What the README and the pages show is run, and must print what they say.
#include "tool_help.h"

#include <gmock/gmock.h>

#include <algorithm>

using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

/// A line "$ ..." of a console block, and the lines below it.
struct ShownCommand
{
    std::string page, command;
    std::vector<std::string> output;
};

fs::path source_folder()
{
    return fs::path(VO_SAMPLES_DIR).parent_path();
}

std::vector<fs::path> list_pages()
{
    std::vector<fs::path> pages = {source_folder() / "README.md"};
    for (const auto& entry : fs::directory_iterator(source_folder() / "docs"))
        if (entry.path().extension() == ".md") pages.push_back(entry.path());
    std::sort(pages.begin(), pages.end());
    return pages;
}

std::vector<ShownCommand> read_page(const fs::path& page)
{
    std::vector<ShownCommand> commands;
    std::ifstream file(page);
    bool is_console = false;
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, 3, "```") == 0)
            is_console = line == "```console";
        else if (is_console && line.compare(0, 2, "$ ") == 0)
            commands.push_back({page.filename().string(), line.substr(2), {}});
        else if (is_console && !commands.empty())
            commands.back().output.push_back(line);
    }
    return commands;
}

std::vector<std::string> split(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// Whether lines are those that a page shows; "..." on a page stands for any number of lines.
bool matches(const std::vector<std::string>& shown, std::size_t s, const std::vector<std::string>& lines, std::size_t i)
{
    if (s == shown.size()) return i == lines.size();
    if (shown[s] == "...") {
        for (; i <= lines.size(); ++i)
            if (matches(shown, s + 1, lines, i)) return true;
        return false;
    }
    return i < lines.size() && shown[s] == lines[i] && matches(shown, s + 1, lines, i + 1);
}

/// Whether a line is run elsewhere: it builds, installs, or runs what another test builds.
bool is_run_elsewhere(const ShownCommand& shown)
{
    // The test of the installed tree runs every line of that page.
    if (shown.page == "embedding.md")
        return read_file(source_folder() / "tests/packaging/installed_tree_test.sh").find("page_lines") !=
               std::string::npos;
    const std::string command = shown.command.substr(0, shown.command.find("  "));
    return read_file(source_folder() / ".ci/run").find("\n" + command + "\n") != std::string::npos;
}

bool is_installed(const std::string& program)
{
    return std::system(("command -v " + program + " >/dev/null").c_str()) == 0;
}

/// The line, but with a small picture where it renders one of the usual size: it is the command that is tested here.
std::string made_quick(std::string command)
{
    const std::string render = "vo_abc render ";
    const std::size_t start = command.find(render);
    if (start == command.npos) return command;
    for (const char* const option : {"--size 64x36 ", "--samples 1 "}) {
        const std::string name(option, std::string(option).find(' '));
        if (command.find(name) == command.npos) command.insert(start + render.size(), option);
    }
    return command;
}

/// Runs a line of a page in a folder that has the samples; one that waits for others is interrupted after a while.
void run(const ShownCommand& shown, const std::string& folder)
{
    const bool waits =
        shown.command.find("vo_abc watch") != std::string::npos && shown.command.find("--for") == std::string::npos;
    const std::string tools = fs::path(VO_ABC_TOOL).parent_path().string();
    const std::string script = folder + "/command.bash", output = folder + "/command.output";
    write_file(script, made_quick(shown.command) + "\n");
    const std::string run = (waits ? "timeout 1 " : "") + std::string("bash ") + script;
    const int status =
        std::system(("cd " + folder + " && PATH=" + tools + ":$PATH " + run + " >" + output + " 2>&1").c_str());
    const std::string printed = read_file(output);
    if (shown.output.empty())
        EXPECT_TRUE(status == 0 || (waits && WEXITSTATUS(status) == 124)) << shown.page << ": " << shown.command << "\n"
                                                                          << printed;
    else
        EXPECT_TRUE(matches(shown.output, 0, split(printed), 0)) << shown.page << ": " << shown.command << "\n"
                                                                 << printed;
}

} // namespace

TEST(DocumentedCommands, PrintWhatThePagesShow)
{
    const ScratchFile scratch("x");
    fs::create_directory_symlink(VO_SAMPLES_DIR, scratch.folder() + "/samples");
    // HDF5 archives are read alone, not written: one of the other kind stands in.
    fs::copy_file(VO_SAMPLES_DIR "/showcase.abc", scratch.folder() + "/old_hdf5.abc");
    std::size_t count = 0;
    for (const fs::path& page : list_pages()) {
        for (const ShownCommand& shown : read_page(page)) {
            if (is_run_elsewhere(shown)) continue;
            if (shown.command.find("| jq") != std::string::npos && !is_installed("jq")) continue;
            run(shown, scratch.folder());
            ++count;
        }
    }
    EXPECT_GT(count, 50u);
}

TEST(DocumentedCommands, EveryCommandHasAnExample)
{
    std::string pages;
    for (const fs::path& page : list_pages())
        for (const ShownCommand& shown : read_page(page))
            pages += shown.command + "\n";
    for (const std::string& command : list_commands())
        EXPECT_THAT(pages, HasSubstr("vo_abc " + command + " "));
}
