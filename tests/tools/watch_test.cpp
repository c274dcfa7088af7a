/// vo_abc watch and keys: rewritten files are noticed, asked about and compared; equal geometry has equal keys.
#include "tool_runner.h"

#include <support/abc_archives.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>

using namespace abc_archives;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

namespace {

/// The mesh /body/shape of so many samples, and the transform /late in versions after the first.
void write_version(const std::string& path, int version)
{
    write_archive(path + ".new", [&](AbcG::OObject top) {
        const std::vector<float> sizes(static_cast<std::size_t>(version), 1.0f);
        add_square(AbcG::OXform(top, "body"), "shape", sizes);
        if (version > 1) AbcG::OXform(top, "late");
    });
    std::filesystem::rename(path + ".new", path);
}

/// Calls `change(round)` again and again, from when the tool may have opened the archive until it has ended.
template <class Change>
ToolRun run_while_changing(std::vector<std::string> arguments, Change&& change)
{
    std::atomic<bool> is_over{false};
    ToolRun run;
    std::thread tool([&] {
        run = run_tool(arguments);
        is_over = true;
    });
    for (int round = 0; !is_over; ++round) {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        if (!is_over) change(round);
    }
    tool.join();
    return run;
}

class Watch : public testing::Test
{
protected:
    std::vector<std::string> arguments(const std::vector<std::string>& more) const
    {
        std::vector<std::string> all = {"watch", file_.path(), "--interval", "0.02"};
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }

    const ScratchFile file_{"watched.abc"};
};

} // namespace

TEST_F(Watch, TellsWhatARewrittenFileChanges)
{
    write_version(file_.path(), 1);
    const ToolRun run = run_while_changing(arguments({"--yes", "--once", "--for", "60"}),
                                           [&](int round) { write_version(file_.path(), round + 2); });
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_THAT(run.errors, HasSubstr("The following Alembic file(s) need to be resynced:\n\n" + file_.path()));
    EXPECT_THAT(run.output, HasSubstr("reloaded: "));
    EXPECT_THAT(run.output, HasSubstr("  ~ /body/shape: polygon mesh, "));
    EXPECT_THAT(run.output, testing::ContainsRegex("[0-9] samples? -> polygon mesh, [0-9]+ samples"));
}

TEST_F(Watch, WaitsForAFileThatIsGoneOrHalfWritten)
{
    write_version(file_.path(), 1);
    const ScratchFile whole("whole.abc");
    write_version(whole.path(), 3);
    const std::string bytes = whole.bytes();
    int last_round = 0;
    const ToolRun run = run_while_changing(arguments({"--yes", "--once", "--for", "60"}), [&](int round) {
        last_round = round;
        if (round == 3) std::filesystem::remove(file_.path());
        if (round == 4) write_file(file_.path(), bytes.substr(0, bytes.size() / 2));
        if (round == 5) write_file(file_.path(), bytes);
    });
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_GE(last_round, 5);
    EXPECT_THAT(run.output, HasSubstr("does not exist; waiting for it"));
    EXPECT_THAT(run.output, HasSubstr("cannot be read yet; waiting: "));
    EXPECT_THAT(run.output, HasSubstr("  ~ /body/shape: polygon mesh, 1 sample -> polygon mesh, 3 samples\n"));
    EXPECT_THAT(run.output, HasSubstr("  + /late: transform"));
}

TEST_F(Watch, AsksOnceForEachVersionAndTakesNoForAnAnswer)
{
    write_version(file_.path(), 1);
    // The tool's standard input has no line: that is no.
    ASSERT_TRUE(std::freopen("/dev/null", "r", stdin));
    int versions = 0;
    const ToolRun run = run_while_changing(arguments({"--for", "2"}), [&](int round) {
        if (round % 2 == 1) write_version(file_.path(), ++versions + 1);
    });
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_THAT(run.output, Not(HasSubstr("reloaded")));
    int questions = 0;
    for (auto at = run.errors.find("[Y/n]"); at != run.errors.npos; at = run.errors.find("[Y/n]", at + 1))
        ++questions;
    EXPECT_GE(questions, 1);
    EXPECT_LE(questions, versions);
}

TEST_F(Watch, AFileThatIsNoArchiveIsBadInput)
{
    EXPECT_EQ(run_tool(arguments({"--once"})).status, 1);
    write_file(file_.path(), "no archive");
    const ToolRun run = run_tool(arguments({"--once"}));
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr("is no Alembic archive"));
    EXPECT_EQ(run_tool(arguments({"--interval", "0"})).status, 2);
}

TEST(Keys, AreEqualForEqualGeometry)
{
    const ScratchFile file("keys.abc");
    write_archive(file.path(), [](AbcG::OObject top) {
        add_square(top, "one", {1, 2});
        add_square(AbcG::OXform(top, "body"), "same", {1});
        add_square(top, "other", {2});
    });
    const ToolRun all = run_tool({"keys", file.path(), "--json"});
    ASSERT_EQ(all.status, 0) << all.errors;
    const json keys = json::parse(all.output);
    EXPECT_EQ(keys.size(), 3u);
    EXPECT_EQ(keys["/one"], keys["/body/same"]);
    EXPECT_NE(keys["/one"], keys["/other"]);
    const ToolRun later = run_tool({"keys", file.path(), "/one", "/other", "--time", "1", "--json"});
    ASSERT_EQ(later.status, 0) << later.errors;
    EXPECT_EQ(json::parse(later.output)["/one"], keys["/other"]);
    EXPECT_THAT(run_tool({"keys", file.path(), "/other"}).output, HasSubstr(keys["/other"].get<std::string>()));
    EXPECT_THAT(run_tool({"keys", file.path(), "/body"}).errors, HasSubstr("has no key"));
    EXPECT_EQ(run_tool({"keys", file.path(), "/absent"}).status, 1);
}
