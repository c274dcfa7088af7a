/// The factory: which kind a file is, what becomes of files that cannot be opened, and what their log says.
#include "layer_model.h"

#include "support/scratch_file.h"

#include <Alembic/Abc/IObject.h>
#include <Alembic/AbcCoreFactory/IFactory.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>

using Alembic::Abc::ErrorHandler;
using Alembic::Abc::IArchive;
using Alembic::AbcCoreFactory::IFactory;
using testing::HasSubstr;

namespace {

typedef std::vector<std::string> Names;

class Factory : public testing::Test
{
protected:
    Factory()
        : folder_("x")
    {
        layer_model::write_scene(path("good.abc"), layer_model::Object{"", {}, {}, {{"a", {}, {}, {}}}});
        layer_model::write_scene(path("other.abc"), layer_model::Object{"", {}, {}, {{"b", {}, {}, {}}}});
    }

    std::string path(const std::string& name) const { return folder_.folder() + "/" + name; }

    std::string write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

    std::string good_bytes() const
    {
        std::ifstream file(path("good.abc"), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    ScratchFile folder_;
    IFactory factory_;
    IFactory::CoreType type_ = IFactory::kLayer;
};

} // namespace

TEST_F(Factory, KeepsItsSettings)
{
    EXPECT_EQ(factory_.getPolicy(), ErrorHandler::kThrowPolicy);
    EXPECT_EQ(factory_.getOgawaNumStreams(), 1u);
    EXPECT_EQ(factory_.getOgawaReadStrategy(), IFactory::kMemoryMappedFiles);
    EXPECT_TRUE(factory_.getHDF5CacheHierarchy());
    EXPECT_FALSE(factory_.getSampleCache());
    factory_.setOgawaNumStreams(8);
    factory_.setOgawaReadStrategy(IFactory::kFileStreams);
    factory_.setHDF5CacheHierarchy(false);
    EXPECT_EQ(factory_.getOgawaNumStreams(), 8u);
    EXPECT_EQ(factory_.getOgawaReadStrategy(), IFactory::kFileStreams);
    EXPECT_FALSE(factory_.getHDF5CacheHierarchy());
}

TEST_F(Factory, OpensOneFileUnderItsPolicy)
{
    factory_.setPolicy(ErrorHandler::kQuietNoopPolicy);
    const IArchive archive = factory_.getArchive(path("good.abc"), type_);
    EXPECT_EQ(type_, IFactory::kOgawa);
    EXPECT_TRUE(archive.valid());
    EXPECT_EQ(archive.getErrorHandlerPolicy(), ErrorHandler::kQuietNoopPolicy);
    EXPECT_EQ(archive.getErrorHandler().getErrorLog(), "");
    EXPECT_EQ(archive.getName(), path("good.abc"));
    EXPECT_TRUE(factory_.getArchive(path("good.abc")).valid());
}

// Each refusal names the file and its cause, without throwing or printing.
TEST_F(Factory, SaysWhyAFileIsRefused)
{
    std::string unfinished = good_bytes();
    unfinished[5] = 0;
    std::string without_root = good_bytes();
    without_root.replace(8, 8, std::string(8, '\0'));
    mkfifo(path("pipe").c_str(), 0600);
    const std::pair<std::string, std::string> refused[] = {
        {path("absent.abc"), "no such file"},
        {path("absent_folder/x.abc"), "no such file"},
        {folder_.folder(), "folder"},
        {path("pipe"), "not a regular file"},
        {write("empty.abc", ""), "empty.abc"},
        {write("text.abc", "not an archive at all"), "text.abc"},
        {write("short.abc", "Oga"), "short.abc"},
        {write("unfinished.abc", unfinished), "not cleanly closed"},
        {write("without_root.abc", without_root), "Invalid Alembic file."},
        {write("half.abc", good_bytes().substr(0, good_bytes().size() / 2)), "half.abc"},
    };
    for (const ErrorHandler::Policy policy :
         {ErrorHandler::kThrowPolicy, ErrorHandler::kNoisyNoopPolicy, ErrorHandler::kQuietNoopPolicy}) {
        factory_.setPolicy(policy);
        for (const auto& [name, cause] : refused) {
            testing::internal::CaptureStderr();
            type_ = IFactory::kOgawa;
            IArchive archive = factory_.getArchive(name, type_);
            EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
            EXPECT_EQ(type_, IFactory::kUnknown) << name;
            EXPECT_FALSE(archive.valid());
            EXPECT_FALSE(archive);
            EXPECT_FALSE(archive.getPtr());
            EXPECT_EQ(archive.getErrorHandlerPolicy(), ErrorHandler::kThrowPolicy);
            // Under the policy that throws logs stay empty.
            const bool has_log = policy != ErrorHandler::kThrowPolicy;
            EXPECT_THAT(archive.getErrorHandler().getErrorLog(), HasSubstr(has_log ? name : ""));
            EXPECT_THAT(archive.getErrorHandler().getErrorLog(), HasSubstr(has_log ? cause : ""));
            EXPECT_EQ(archive.getErrorHandler().valid(), !has_log);
            archive.reset();
            EXPECT_EQ(archive.getErrorHandler().getErrorLog(), "");
            archive = factory_.getArchive(path("good.abc"));
            EXPECT_TRUE(archive.valid());
        }
    }
}

TEST_F(Factory, RecognisesHdf5Files)
{
    // A signature alone is no archive, whether or not this build reads HDF5.
    factory_.setPolicy(ErrorHandler::kQuietNoopPolicy);
    const std::string name = write("hdf5.abc", "\x89HDF\r\n\x1a\n" + std::string(100, 'x'));
    const IArchive archive = factory_.getArchive(name, type_);
    EXPECT_FALSE(archive.valid());
    EXPECT_THAT(archive.getErrorHandler().getErrorLog(), HasSubstr(name));
#ifdef ALEMBIC_WITH_HDF5
    EXPECT_EQ(type_, IFactory::kUnknown);
#else
    EXPECT_EQ(type_, IFactory::kHDF5);
    EXPECT_THAT(archive.getErrorHandler().getErrorLog(), HasSubstr("HDF5"));
#endif
}

TEST_F(Factory, LayersWhatCanBeOpened)
{
    const std::string good = path("good.abc"), other = path("other.abc"), bad = write("bad.abc", "bad");
    const std::string absent = path("absent.abc");
    struct Case
    {
        Names names;
        std::string archive_name; // empty: none
        IFactory::CoreType type;
    };
    factory_.setPolicy(ErrorHandler::kQuietNoopPolicy);
    const Case cases[] = {
        {{good}, good, IFactory::kOgawa},
        {{good, other}, other + "," + good, IFactory::kLayer}, // the strongest comes first, and is named last
        {{good, good}, good + "," + good, IFactory::kLayer},
        {{bad, good}, good, IFactory::kOgawa},
        {{good, bad}, good, IFactory::kUnknown}, // intended: the type of the last name tried
        {{good, bad, other}, other + "," + good, IFactory::kLayer},
        {{bad, absent}, "", IFactory::kUnknown},
        {{}, "", IFactory::kUnknown},
    };
    for (const Case& c : cases) {
        const std::string names = testing::PrintToString(c.names);
        type_ = IFactory::kHDF5;
        const IArchive archive = factory_.getArchive(c.names, type_);
        EXPECT_EQ(type_, c.type) << names;
        EXPECT_EQ(archive.valid(), !c.archive_name.empty()) << names;
        EXPECT_EQ(archive.getName(), c.archive_name) << names;
        EXPECT_EQ(factory_.getArchive(c.names).valid(), archive.valid()) << names;
        if (archive.valid()) continue;
        for (const std::string& name : c.names)
            EXPECT_THAT(archive.getErrorHandler().getErrorLog(), HasSubstr(name));
        EXPECT_NE(archive.getErrorHandler().getErrorLog(), "");
    }
}

TEST_F(Factory, OpensStreams)
{
    factory_.setPolicy(ErrorHandler::kQuietNoopPolicy);
    std::istringstream first(good_bytes()), second(good_bytes()), bad("bad");
    EXPECT_TRUE(factory_.getArchive(std::vector<std::istream*>{&first, &second}, type_).valid());
    EXPECT_EQ(type_, IFactory::kOgawa);
    for (const std::vector<std::istream*>& streams :
         {std::vector<std::istream*>(), std::vector<std::istream*>{&bad}, std::vector<std::istream*>{nullptr}}) {
        const IArchive archive = factory_.getArchive(streams, type_);
        EXPECT_FALSE(archive.valid());
        EXPECT_EQ(type_, IFactory::kUnknown);
        EXPECT_NE(archive.getErrorHandler().getErrorLog(), "");
    }
}
