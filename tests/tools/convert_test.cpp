/// vo_abc convert: nothing is lost, cuts keep what their times and objects need, and an output is whole or not there.
#include "tool_runner.h"

#include <support/abc_archives.h>
#include <support/archive_text.h>
#include <support/random_archive.h>

#include <Alembic/AbcCoreLayer/Read.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace abc_archives;
using namespace vo_test;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const Alembic::AbcCoreOgawa::ReadArchive open_ogawa;

class Convert : public testing::Test
{
protected:
    std::string path(const std::string& name) const { return scratch_.folder() + "/" + name; }

    /// Converts to "out.abc", which must succeed.
    void convert(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), "convert");
        arguments.insert(arguments.end(), {"-o", path("out.abc")});
        const ToolRun run = run_tool(arguments);
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(run.errors, "");
    }

    std::string out_text() const { return archive_text(*open_ogawa(path("out.abc"))); }

    std::vector<std::string> names_in_folder() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(scratch_.folder()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    const ScratchFile scratch_{"unused"};
};

/// Full names of an object and all below it.
void list_paths(AbcA::ObjectReader& object, std::vector<std::string>& paths)
{
    paths.push_back(object.getFullName());
    for (std::size_t i = 0; i < object.getNumChildren(); ++i)
        list_paths(*object.getChild(i), paths);
}

/// The text of an archive without its table of time samplings, the numbers in it, and the metadata of the archive.
std::string without_samplings(const std::string& text)
{
    std::string objects = text.substr(text.find('\n', text.find("_ai_AlembicVersion=")));
    const std::string word = " sampling ";
    for (std::size_t at = objects.find(word); at != objects.npos; at = objects.find(word, at)) {
        const std::size_t end = objects.find_first_not_of("0123456789", at + word.size());
        objects.erase(at, std::min(end, objects.size()) - at);
    }
    return objects;
}

/// A scalar property of that many equal samples; a number from 65536 on.
void write_repeats(const std::string& file, std::uint32_t count)
{
    AbcG::OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file);
    AbcG::ODoubleProperty property(archive.getTop().getProperties(), "value");
    property.set(0.5);
    for (std::uint32_t i = 1; i < count; ++i)
        property.setFromPrevious();
}

} // namespace

TEST_F(Convert, KeepsEverythingInNoMoreRoom)
{
    for (unsigned seed = 1; seed <= 8; ++seed) {
        write_random_archive(path("in.abc"), {seed});
        convert({path("in.abc")});
        EXPECT_EQ(out_text(), archive_text(*open_ogawa(path("in.abc")))) << "seed " << seed;
        // Samples that repeat, or are those of another property, are stored once in both.
        EXPECT_LE(std::filesystem::file_size(path("out.abc")), std::filesystem::file_size(path("in.abc")))
            << "seed " << seed;
    }
}

TEST_F(Convert, WritesWhatLayersAreTogether)
{
    write_random_archive(path("base.abc"), {1});
    write_random_archive(path("over.abc"), {2});
    write_archive(path("more.abc"), [](AbcG::OObject top) { add_square(AbcG::OXform(top, "nothing"), "shape"); });
    convert({path("base.abc"), path("over.abc"), path("more.abc")});
    Alembic::AbcCoreLayer::ArchiveReaderPtrs layers = {open_ogawa(path("base.abc")), open_ogawa(path("over.abc")),
                                                       open_ogawa(path("more.abc"))};
    // Of the layers' time samplings, equal ones become one: they have other numbers then.
    EXPECT_EQ(without_samplings(out_text()),
              without_samplings(archive_text(*Alembic::AbcCoreLayer::ReadArchive()(layers))));
}

TEST_F(Convert, LayersOfDifferentLengthKeepTheLongest)
{
    for (const int count : {10, 2}) {
        write_archive(path(std::to_string(count) + ".abc"), [&](AbcG::OObject top) {
            const std::string name = "samples" + std::to_string(count);
            AbcG::ODoubleProperty property(top.getProperties(), name,
                                           std::make_shared<AbcG::TimeSampling>(1.0 / 24.0, 0.0));
            for (int i = 0; i < count; ++i)
                property.set(i);
        });
    }
    for (const bool is_long_first : {false, true}) {
        const std::string first = path(is_long_first ? "10.abc" : "2.abc");
        const std::string second = path(is_long_first ? "2.abc" : "10.abc");
        convert({first, second});
        const std::string whole = out_text();
        const AbcA::ArchiveReaderPtr copy = open_ogawa(path("out.abc"));
        ASSERT_EQ(copy->getNumTimeSamplings(), 2u);
        EXPECT_EQ(copy->getMaxNumSamplesForTimeSamplingIndex(1), 10);
        convert({first, second, "--objects", "/"});
        EXPECT_EQ(without_samplings(out_text()), without_samplings(whole)) << "the top object is everything";
    }
}

TEST_F(Convert, ReplacesTheArchiveItReads)
{
    write_random_archive(path("stored.abc"), {3});
    std::filesystem::create_symlink("stored.abc", path("out.abc"));
    const std::string before = out_text();
    convert({path("out.abc")});
    EXPECT_EQ(out_text(), before);
    EXPECT_TRUE(std::filesystem::is_symlink(path("out.abc"))) << "a link is followed";
    EXPECT_THAT(names_in_folder(), ElementsAre("out.abc", "stored.abc"));
}

TEST_F(Convert, AFrameRangeHasTheValuesItHadAtEveryTime)
{
    const AbcG::TimeSampling samplings[] = {
        AbcG::TimeSampling(0.25, -1.0),
        AbcG::TimeSampling(AbcG::TimeSamplingType(3, 1.0), {0.1, 0.2, 0.7}),
        AbcG::TimeSampling(AbcG::TimeSamplingType(3, 2.0), {-0.5, 0.0, 1.5}), // ends where the next cycle begins
        AbcG::TimeSampling(AbcG::TimeSamplingType(AbcG::TimeSamplingType::kAcyclic),
                           {-3.0, 0.0, 0.4, 0.5, 2.0, 2.5, 2.75, 3.0, 3.25, 7.0}),
        AbcG::TimeSampling(),
    };
    constexpr int counts[] = {1, 2, 4, 10}; // samples: one, those that end before the range, those that go through it
    {
        AbcG::OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), path("in.abc"));
        for (const AbcG::TimeSampling& sampling : samplings)
            for (const int count : counts) {
                const std::uint32_t index = archive.addTimeSampling(sampling);
                AbcG::ODoubleProperty property(archive.getTop().getProperties(),
                                               std::to_string(index) + "_" + std::to_string(count), index);
                for (int i = 0; i < count; ++i)
                    property.set(i + 0.5);
            }
    }
    std::mt19937 random(1);
    for (int round = 0; round < 12; ++round) {
        const int first = int(random() % 40) - 8, last = first + int(random() % 12);
        constexpr double fps = 8.0;
        convert({path("in.abc"), "--frames", std::to_string(first) + "-" + std::to_string(last), "--fps", "8"});
        const auto whole = open_ogawa(path("in.abc"))->getTop()->getProperties();
        const auto cut = open_ogawa(path("out.abc"))->getTop()->getProperties();
        ASSERT_EQ(cut->getNumProperties(), std::size(samplings) * std::size(counts));
        for (std::size_t i = 0; i < cut->getNumProperties(); ++i) {
            const std::string name = cut->getPropertyHeader(i).getName();
            const auto from = whole->getScalarProperty(name), to = cut->getScalarProperty(name);
            EXPECT_LE(to->getNumSamples(), from->getNumSamples());
            for (int k = 0; k <= 20; ++k) {
                const double time = (first + (last - first) * k / 20.0) / fps;
                const auto values = [&](AbcA::ScalarPropertyReader& property) {
                    std::vector<double> found(3);
                    property.getSample(property.getFloorIndex(time).first, &found[0]);
                    property.getSample(property.getCeilIndex(time).first, &found[1]);
                    property.getSample(property.getNearIndex(time).first, &found[2]);
                    return found;
                };
                EXPECT_EQ(values(*to), values(*from))
                    << name << " at " << time << " s of frames " << first << " to " << last;
            }
        }
    }
}

TEST_F(Convert, ObjectsComeWithWhatTheyNeed)
{
    write_archive(path("in.abc"), [](AbcG::OObject top) {
        AbcG::OXform body(top, "body"), library(top, "library"), other(top, "other");
        add_square(body, "shape");
        AbcG::OXform(body, "left").addChildInstance(add_square(AbcG::OXform(library, "a"), "leaf"), "copy");
        AbcG::OXform(library, "unused");
        AbcG::OXform(top, "body2");
    });
    const auto kept = [&] {
        std::vector<std::string> paths;
        list_paths(*open_ogawa(path("out.abc"))->getTop(), paths);
        return paths;
    };
    convert({path("in.abc"), "--objects", "/body/left"});
    EXPECT_THAT(kept(), ElementsAre("/", "/body", "/body/left", "/body/left/copy", "/library", "/library/a",
                                    "/library/a/leaf"));
    convert({path("in.abc"), "--objects", "/body", "/library/unused"});
    EXPECT_THAT(kept(), ElementsAre("/", "/body", "/body/shape", "/body/left", "/body/left/copy", "/library",
                                    "/library/a", "/library/a/leaf", "/library/unused"));
    const ToolRun run = run_tool({"convert", path("in.abc"), "-o", path("no.abc"), "--objects", "/body/left/copy/x"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr("/body/left/copy/x: there is no such object"));
    EXPECT_THAT(names_in_folder(), ElementsAre("in.abc", "out.abc"));
}

TEST_F(Convert, LargeSamplesThatRepeatStayRepeats)
{
    const AbcA::DataType types[] = {AbcA::DataType(AbcA::kFloat32POD, 3), AbcA::DataType(AbcA::kStringPOD, 1),
                                    AbcA::DataType(AbcA::kWstringPOD, 1)};
    {
        const AbcA::ArchiveWriterPtr archive = Alembic::AbcCoreOgawa::WriteArchive()(path("in.abc"), AbcA::MetaData());
        std::vector<float> numbers(60000);
        std::vector<std::string> texts(8000, "text");
        std::vector<std::wstring> wide_texts(8000, L"text");
        void* const values[] = {numbers.data(), texts.data(), wide_texts.data()};
        for (std::size_t t = 0; t < std::size(types); ++t) {
            const auto property = archive->getTop()->getProperties()->createArrayProperty(
                PODName(types[t].getPod()), AbcA::MetaData(), types[t], 0);
            // Repeats between changes, of what was there before, and of another length.
            for (const int value : {1, 1, 1, 2, 2, 1, 1, 3, 3}) {
                numbers.back() = float(value);
                texts.front() = std::to_string(value);
                wide_texts.front() = std::to_wstring(value);
                const std::size_t count = (t == 0 ? numbers.size() / 3 : texts.size()) - std::size_t(value == 3);
                property->setSample(AbcA::ArraySample(values[t], types[t], AbcA::Dimensions(count)));
            }
        }
    }
    convert({path("in.abc")});
    EXPECT_EQ(out_text(), archive_text(*open_ogawa(path("in.abc"))));
    EXPECT_LE(std::filesystem::file_size(path("out.abc")), std::filesystem::file_size(path("in.abc")));
}

TEST_F(Convert, ReadsWhatDigestsSayOtherwiseAndNamesShapesThatChangeAlone)
{
    const AbcA::DataType type(AbcA::kFloat32POD, 1);
    std::vector<float> first(30000, 1.0f), second(30000, 2.0f);
    {
        const AbcA::ArchiveWriterPtr archive = Alembic::AbcCoreOgawa::WriteArchive()(path("in.abc"), AbcA::MetaData());
        const auto property =
            archive->getTop()->getProperties()->createArrayProperty("values", AbcA::MetaData(), type, 0);
        AbcA::Dimensions shape;
        shape.setRank(2);
        shape[0] = 3;
        shape[1] = 10000;
        property->setSample(AbcA::ArraySample(first.data(), type, AbcA::Dimensions(30000)));
        property->setSample(AbcA::ArraySample(second.data(), type, shape));
    }
    const std::string good = read_file(path("in.abc"));
    const auto bytes_of = [](const std::vector<float>& values) {
        return std::string(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(float));
    };
    constexpr std::size_t digest_size = 16; // stands before the values
    const std::size_t first_place = good.find(bytes_of(first)), second_place = good.find(bytes_of(second));
    ASSERT_NE(first_place, good.npos);
    ASSERT_NE(second_place, good.npos);

    std::string same_digest = good;
    same_digest.replace(second_place - digest_size, digest_size, good, first_place - digest_size, digest_size);
    write_file(path("in.abc"), same_digest);
    convert({path("in.abc")});
    AbcA::ArraySamplePtr sample;
    open_ogawa(path("out.abc"))->getTop()->getProperties()->getArrayProperty("values")->getSample(1, sample);
    EXPECT_EQ(static_cast<const float*>(sample->getData())[0], 2.0f);

    std::string same_values = good;
    same_values.replace(second_place, bytes_of(first).size(), bytes_of(first));
    write_file(path("in.abc"), same_values);
    const ToolRun run = run_tool({"convert", path("in.abc"), "-o", path("in.abc")});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors, HasSubstr("values: the dimensions of some samples"));
    EXPECT_EQ(read_file(path("in.abc")), same_values) << "not written over";
}

TEST_F(Convert, WritesToPlainFilesOnly)
{
    write_random_archive(path("in.abc"), {5});
    write_random_archive(path("kept.abc"), {6});
    const std::string in = read_file(path("in.abc")), kept = read_file(path("kept.abc"));
    std::filesystem::create_directory(path("folder.abc"));
    std::filesystem::create_symlink("nowhere/at_all.abc", path("dangling.abc"));
    std::filesystem::create_symlink("kept.abc", path("link.abc"));
    std::filesystem::create_hard_link(path("in.abc"), path("same.abc"));
    mkfifo(path("pipe.abc").c_str(), 0600);
    const std::vector<std::string> names = names_in_folder();

    struct Case
    {
        std::string output;
        const char* error;
    };
    const Case cases[] = {
        {path("folder.abc"), "Is a directory"},           {path("absent") + "/out.abc", "No such file or directory"},
        {path("in.abc") + "/out.abc", "Not a directory"}, {path("dangling.abc"), "No such file or directory"},
        {path("pipe.abc"), "it is no plain file"},
    };
    for (const Case& wrong : cases) {
        const ToolRun run = run_tool({"convert", path("in.abc"), "-o", wrong.output});
        EXPECT_EQ(run.status, 1) << wrong.output;
        EXPECT_THAT(run.errors, HasSubstr("cannot be written: "));
        EXPECT_THAT(run.errors, HasSubstr(wrong.error));
        EXPECT_EQ(names_in_folder(), names) << wrong.output;
    }
    if (geteuid() != 0) { // to root nothing is read-only
        std::filesystem::permissions(path("kept.abc"), std::filesystem::perms::owner_read);
        EXPECT_EQ(run_tool({"convert", path("in.abc"), "-o", path("kept.abc")}).status, 1);
        std::filesystem::permissions(path("kept.abc"), std::filesystem::perms::owner_all);
    }
    EXPECT_EQ(read_file(path("in.abc")), in);
    EXPECT_EQ(read_file(path("kept.abc")), kept);

    // A link's file is replaced, not the link; the file that is read may have another name.
    EXPECT_EQ(run_tool({"convert", path("in.abc"), "-o", path("link.abc")}).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(path("link.abc")));
    EXPECT_EQ(archive_text(*open_ogawa(path("kept.abc"))), archive_text(*open_ogawa(path("in.abc"))));
    EXPECT_EQ(run_tool({"convert", path("in.abc"), "-o", path("same.abc")}).status, 0);
    EXPECT_EQ(archive_text(*open_ogawa(path("same.abc"))), archive_text(*open_ogawa(path("in.abc"))));
    EXPECT_EQ(names_in_folder(), names);
}

TEST_F(Convert, LeavesNothingBehindWhenItFails)
{
    write_random_archive(path("in.abc"), {4});
    const std::string good = read_file(path("in.abc"));
    write_file(path("out.abc"), "what was there");
    int failed = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        std::string bytes = good;
        for (int i = 0; i < 60; ++i)
            bytes[16 + random() % (bytes.size() - 16)] ^= char(1 << random() % 8);
        write_file(path("in.abc"), bytes);
        const ToolRun run = run_tool({"convert", path("in.abc"), "-o", path("out.abc")});
        ASSERT_LE(run.status, 1) << "seed " << seed << ": " << run.errors;
        if (run.status == 1) {
            ++failed;
            EXPECT_THAT(run.errors, HasSubstr("vo_abc: " + path("in.abc") + ": "));
            EXPECT_EQ(read_file(path("out.abc")), "what was there");
        }
        EXPECT_THAT(names_in_folder(), ElementsAre("in.abc", "out.abc"));
        write_file(path("out.abc"), "what was there");
    }
    EXPECT_GT(failed, 5);
    EXPECT_EQ(run_tool({"convert", path("in.abc"), "-o", scratch_.folder()}).status, 2);

    // A full disk is not blamed on the archive.
    write_file(path("in.abc"), read_file(std::string(VO_SAMPLES_DIR) + "/showcase.abc"));
    const std::string command =
        "ulimit -f 64; " VO_ABC_TOOL " convert " + path("in.abc") + " -o " + path("out.abc") + " 2>" + path("errors");
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    EXPECT_THAT(read_file(path("errors")), HasSubstr("Is the disk full?"));
    EXPECT_THAT(read_file(path("errors")), testing::Not(HasSubstr("damaged")));
    EXPECT_EQ(read_file(path("out.abc")), "what was there");
    std::filesystem::remove(path("errors"));
    EXPECT_EQ(run_tool({"convert", path("in.abc")}).status, 2);
    EXPECT_EQ(run_tool({"convert", path("in.abc"), "-o", path("x.abc"), "--frames", "5-1"}).status, 2);
}

TEST_F(Convert, AnInterruptionLeavesNothingBehind)
{
    constexpr std::uint32_t count = 70000, endless = 0xfffffff0;
    write_repeats(path("in.abc"), count);
    std::string bytes = read_file(path("in.abc"));
    const std::string stored(reinterpret_cast<const char*>(&count), sizeof count);
    const std::size_t place = bytes.find(stored);
    ASSERT_NE(place, bytes.npos);
    bytes.replace(place, stored.size(), reinterpret_cast<const char*>(&endless), sizeof endless);
    write_file(path("in.abc"), bytes);

    const pid_t tool = fork();
    if (tool == 0) {
        std::signal(SIGINT, SIG_DFL); // ignored where the test itself runs in the background
        dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
        execl(VO_ABC_TOOL, "vo_abc", "convert", path("in.abc").c_str(), "-o", path("out.abc").c_str(), nullptr);
        _exit(127);
    }
    for (int i = 0; i < 600 && names_in_folder().size() < 2; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_THAT(names_in_folder(), ElementsAre("in.abc", testing::StartsWith("out.abc.")));
    kill(tool, SIGINT);
    int status = 0;
    waitpid(tool, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
    EXPECT_THAT(names_in_folder(), ElementsAre("in.abc"));
}
