/// Broken input and wrong usage: a clear message, the right exit status, never a crash.
#include "tool_runner.h"

#include <support/abc_archives.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <random>
#include <sstream>

using namespace abc_archives;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Each subcommand on an archive.
std::vector<std::vector<std::string>> commands_on(const std::string& archive, const std::string& output)
{
    return {{"info", archive},
            {"tree", archive, "--json"},
            {"dump", archive, "/body/shape"},
            {"export", archive, "-o", output},
            {"render", archive, "-o", output + ".png", "--size", "8x8", "--samples", "1"},
            {"keys", archive},
            {"watch", archive, "--for", "0"},
            {"check", archive},
            {"size", archive},
            {"diff", archive, archive},
            {"convert", archive, "-o", output + ".abc"}};
}

std::size_t count_of(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

/// How often the part is in the line that has it most often.
std::size_t count_in_a_line(const std::string& text, const std::string& part)
{
    std::size_t most = 0;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        most = std::max(most, count_of(line, part));
    return most;
}

class BrokenInput : public testing::Test
{
protected:
    BrokenInput()
    {
        const ScratchFile good("good.abc");
        write_square_archive(good.path());
        good_bytes_ = good.bytes();
    }

    /// Writes these bytes under that name, and expects status 1 and a message with the name from each subcommand.
    void expect_refusal(const std::string& name, const std::string& bytes, const std::string& message)
    {
        const ScratchFile file(name);
        write_file(file.path(), bytes);
        expect_refusal_of(file.path(), message);
    }

    void expect_refusal_of(const std::string& path, const std::string& message)
    {
        for (const auto& command : commands_on(path, scratch_.path())) {
            const ToolRun run = run_tool(command);
            EXPECT_EQ(run.status, 1) << command[0] << " " << path;
            EXPECT_EQ(run.output, "") << command[0] << " " << path;
            EXPECT_THAT(run.errors, StartsWith("vo_abc: ")) << command[0];
            EXPECT_THAT(run.errors, HasSubstr(path)) << command[0];
            EXPECT_THAT(run.errors, HasSubstr(message)) << command[0];
        }
        EXPECT_FALSE(std::filesystem::exists(scratch_.path()));
        EXPECT_FALSE(std::filesystem::exists(scratch_.path() + ".png"));
        EXPECT_FALSE(std::filesystem::exists(scratch_.path() + ".abc"));
    }

    std::string good_bytes_;
    ScratchFile scratch_{"out.obj"};
};

} // namespace

TEST_F(BrokenInput, FilesThatAreNoArchives)
{
    expect_refusal("empty.abc", "", "is no Alembic archive, or a damaged one");
    expect_refusal("text.abc", "this is no archive, but it is a text\n", "is no Alembic archive, or a damaged one");
    expect_refusal("walk.txt", good_bytes_, "has not the extension \"abc\"");
    expect_refusal_of(scratch_.folder() + "/missing.abc", "does not exist");
    std::filesystem::create_directory(scratch_.folder() + "/folder.abc");
    expect_refusal_of(scratch_.folder() + "/folder.abc", "is not a regular file");
}

TEST_F(BrokenInput, CutFilesAreRefusedWhereverTheyEnd)
{
    for (std::size_t part = 1; part < 6; ++part)
        expect_refusal("cut.abc", good_bytes_.substr(0, good_bytes_.size() * part / 6), "is no Alembic archive");
    expect_refusal("cut.abc", good_bytes_.substr(0, good_bytes_.size() - 1), "is no Alembic archive");
}

TEST_F(BrokenInput, ChangedBytesNeverCrash)
{
    const unsigned int seed = 20;
    std::mt19937 random(seed);
    const ScratchFile file("changed.abc");
    for (std::size_t i = 0; i < 120; ++i) {
        std::string bytes = good_bytes_;
        for (int change = 0; change < 3; ++change)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        write_file(file.path(), bytes);
        const auto commands = commands_on(file.path(), scratch_.path());
        for (std::size_t c = i % 4; c < commands.size(); c += 4) { // a quarter of them each, for the sake of time
            const std::vector<std::string>& command = commands[c];
            const ToolRun run = run_tool(command);
            EXPECT_TRUE(run.status == 0 || run.status == 1)
                << "seed " << seed << ", file " << i << ", " << command[0] << ": " << run.status << "\n"
                << run.errors;
            if (run.status == 1) {
                EXPECT_THAT(run.errors, HasSubstr("vo_abc: "));
                // "A and B differ" names its two archives, which are one here.
                EXPECT_LE(count_in_a_line(run.errors, file.path()), command[0] == "diff" ? 2u : 1u)
                    << "seed " << seed << ", file " << i << ", " << command[0] << ": " << run.errors;
            }
        }
    }
}

TEST_F(BrokenInput, DamageInPlacesLeavesTheRestToBeShown)
{
    const std::string good = read_file(std::string(VO_SAMPLES_DIR) + "/showcase.abc");
    const ScratchFile file("damaged.abc");
    std::mt19937 random(1);
    std::map<std::string, int> damaged_counts;
    for (int i = 0; i < 60; ++i) {
        std::string bytes = good;
        for (int change = 0; change < 40; ++change)
            bytes[bytes.size() / 20 + random() % (bytes.size() * 19 / 20 - 8)] = static_cast<char>(random());
        write_file(file.path(), bytes);
        for (const std::vector<std::string>& command :
             std::vector<std::vector<std::string>>{{"info"}, {"tree", "--json"}, {"size"}}) {
            std::vector<std::string> arguments = command;
            arguments.insert(arguments.begin() + 1, file.path());
            const ToolRun run = run_tool(arguments);
            if (run.status == 0 || run.errors.find("is no Alembic archive") != run.errors.npos) continue;
            ++damaged_counts[command[0]];
            EXPECT_EQ(run.status, 1) << run.errors;
            EXPECT_THAT(run.output, HasSubstr(command[0] == "tree"   ? "\"problem\": \""
                                              : command[0] == "info" ? "unreadable: "
                                                                     : "What cannot be read:\n/"))
                << command[0] << ", file " << i;
            EXPECT_THAT(run.errors, StartsWith("vo_abc: " + file.path() + ": "));
            EXPECT_THAT(run.errors, HasSubstr("cannot be read"));
            EXPECT_THAT(run.errors, HasSubstr("'vo_abc check' lists all damage."));
        }
    }
    for (const char* const command : {"info", "tree", "size"})
        EXPECT_GT(damaged_counts[command], 1) << command;
}

TEST_F(BrokenInput, ALayerThatCannotBeOpenedIsNamed)
{
    const ScratchFile good("good.abc"), bad("bad.abc");
    write_file(good.path(), good_bytes_);
    write_file(bad.path(), "no archive");
    const ToolRun run = run_tool({"tree", good.path(), bad.path()});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, StartsWith("vo_abc: " + bad.path() + ": is no Alembic archive"));
}

TEST_F(BrokenInput, ObjectsThatAreNotThere)
{
    const ScratchFile file("good.abc");
    write_file(file.path(), good_bytes_);
    const std::string message = "vo_abc: " + file.path() + ": /body/nobody: there is no such object";
    EXPECT_THAT(run_tool({"tree", file.path(), "--object", "/body/nobody"}).errors, StartsWith(message));
    EXPECT_THAT(run_tool({"dump", file.path(), "/body/nobody"}).errors, StartsWith(message));
    const ToolRun run = run_tool({"export", file.path(), "--object", "/body/nobody", "-o", scratch_.path()});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, StartsWith(message));
}

TEST_F(BrokenInput, WrongUsageIsStatusTwo)
{
    const ScratchFile file("good.abc");
    write_file(file.path(), good_bytes_);
    const std::string archive = file.path(), obj = scratch_.path();
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"no-such-command"},
        {"info"},
        {"info", archive, "--no-such-option"},
        {"tree", archive, "--depth", "-1"},
        {"tree", archive, "--depth", "deep"},
        {"dump", archive},
        {"export", archive},
        {"export", archive, "-o", "out.stl"},
        {"export", archive, "-o", obj, "--time", "soon"},
        {"export", archive, "-o", obj, "--frames", "9-1"},
        {"export", archive, "-o", obj, "--frames", "1-"},
        {"export", archive, "-o", obj, "--frames", "0-99999999999999999999"},
        {"export", archive, "-o", obj, "--frames", "1-2", "--fps", "0"},
        {"export", archive, "-o", obj, "--frames", "1-2", "--time", "1"},
        {"export", archive, "-o", obj, "--fps", "24"},
        {"sample", "-o", scratch_.folder() + "/scene.txt"},
        {"sample", "-o", scratch_.folder()},
        {"convert", archive, "-o", scratch_.folder() + "/scene"},
        {"convert", archive, "-o", obj},
    };
    for (const auto& arguments : wrong) {
        const ToolRun run = run_tool(arguments);
        EXPECT_EQ(run.status, 2) << testing::PrintToString(arguments);
        EXPECT_THAT(run.errors, StartsWith("vo_abc: ")) << testing::PrintToString(arguments);
        EXPECT_EQ(count_of("\n" + run.errors, "\nvo_abc: "), count_of(run.errors, "\n")) << run.errors;
        EXPECT_EQ(run.output, "") << testing::PrintToString(arguments);
    }
    for (const std::vector<std::string>& refused :
         std::vector<std::vector<std::string>>{{"no-such-command", "there is no command 'no-such-command'"},
                                               {"diff", archive, archive, "--tolerance", "nan", "'nan' is no number"},
                                               {"diff", archive, archive, "--tolerance", "inf", "'inf' is no number"},
                                               {"diff", archive, archive, "--tolerance", "-1", "number of 0 or more"},
                                               {"dump", archive, "/body", "--time", "1e999", "'1e999' is no number"},
                                               {"watch", archive, "--for", "nan", "'nan' is no number of 0 or more"},
                                               {"sample", "-o", "s.txt", "the name must end in .abc"},
                                               {"convert", archive, "-o", "s.txt", "the name must end in .abc"},
                                               {"tree", archive, "--depth", "x", "'vo_abc tree --help' shows"},
                                               {"check", archive, "--limit", "-1", "'-1' is no whole number"},
                                               {"render", archive, "-o", "x.png", "--shade", "gold",
                                                "'gold' is none of clay, group, normal, uv, velocity"},
                                               {"size", archive, "--by", "1", "'1' is none of object, property"}}) {
        const ToolRun run = run_tool({refused.begin(), refused.end() - 1});
        EXPECT_EQ(run.status, 2) << testing::PrintToString(refused);
        EXPECT_THAT(run.errors, HasSubstr(refused.back()));
    }
    for (const char* const command : {"info", "tree", "export", "dump"}) {
        const ToolRun help = run_tool({command, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_THAT(help.output, HasSubstr("Examples:\n"));
    }
}

TEST_F(BrokenInput, AFullDiskIsNoticed)
{
    const ScratchFile file("good.abc");
    write_file(file.path(), good_bytes_);
    const std::string command = std::string(VO_ABC_TOOL) + " tree " + file.path() + " >/dev/full 2>" + scratch_.path();
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_THAT(read_file(scratch_.path()), HasSubstr("standard output: cannot be written"));
}
