/// HDF5 archives, read: the same as Ogawa archives that hold the same.
#include "archive_bytes.h"
#include "hdf5_random_archive.h"
#include "support/archive_text.h"
#include "support/quiet_errors.h"
#include "support/scratch_file.h"

#include <Alembic/AbcCoreFactory/All.h>
#include <Alembic/AbcCoreHDF5/All.h>
#include <Alembic/AbcCoreOgawa/All.h>
#include <gmock/gmock.h>

#include <thread>
#include <vector>

using namespace vo_test;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const Alembic::AbcCoreHDF5::ReadArchive open_hdf5;
const Alembic::AbcCoreOgawa::ReadArchive open_ogawa;

/// Every test watches that nothing is printed.
class Hdf5Reader : public testing::Test
{
protected:
    /// Adds to the HDF5 archive of the test, or changes it: `act(file)`.
    template <class Act>
    void change(const Act& act)
    {
        const hdf5_archives::Id file(H5Fopen(archive_.hdf5.c_str(), H5F_ACC_RDWR, H5P_DEFAULT), H5Fclose);
        act(file);
    }

    const QuietErrors quiet_;
    const ScratchFile scratch_{"unused"};
    const RandomArchive archive_{scratch_.folder(), RandomContents()};
};

/// Calls `act(compound)` for the object's compound and all within it.
template <class Act>
void for_each_compound(const AbcA::CompoundPropertyReaderPtr& compound, const Act& act)
{
    act(*compound);
    for (std::size_t i = 0; i < compound->getNumProperties(); ++i)
        if (compound->getPropertyHeader(i).isCompound()) for_each_compound(compound->getCompoundProperty(i), act);
}

AbcA::CompoundPropertyReaderPtr properties_of(const AbcA::ArchiveReaderPtr& archive)
{
    return archive->getTop()->getChild("many")->getProperties();
}

} // namespace

TEST_F(Hdf5Reader, ReadsWhatOgawaArchivesHold)
{
    for (unsigned seed = 1; seed <= 12; ++seed) {
        const RandomArchive archive(scratch_.folder(), {seed}, hdf5_archives::Form(seed % 4));
        EXPECT_EQ(archive_text(*open_hdf5(archive.hdf5)), archive_text(*open_ogawa(archive.ogawa))) << "seed " << seed;
    }
}

TEST_F(Hdf5Reader, ConvertsNumbersAsOgawaDoesAndRefusesTextsAndHalves)
{
    const auto hdf5 = properties_of(open_hdf5(archive_.hdf5)), ogawa = properties_of(open_ogawa(archive_.ogawa));
    int conversions = 0;
    for (std::size_t i = 0; i < hdf5->getNumProperties(); ++i) {
        const AbcA::PropertyHeader& header = hdf5->getPropertyHeader(i);
        if (!header.isArray() || hdf5->getArrayProperty(i)->getNumSamples() == 0) continue;
        const auto array = hdf5->getArrayProperty(i), same = ogawa->getArrayProperty(header.getName());
        AbcA::Dimensions shape;
        array->getDimensions(0, shape);
        for (int pod = AbcA::kBooleanPOD; pod <= AbcA::kWstringPOD; ++pod) {
            const auto target = static_cast<AbcA::PlainOldDataType>(pod), source = header.getDataType().getPod();
            const auto room = [&] {
                return AbcA::AllocateArraySample(AbcA::DataType(target, header.getDataType().getExtent()), shape);
            };
            const auto converted = room(), expected = room();
            const auto read_as = [&](AbcA::ArrayPropertyReader& from, const AbcA::ArraySamplePtr& into) {
                from.getAs(0, const_cast<void*>(into->getData()), target);
            };
            const auto converts = [](int type) { return type < AbcA::kStringPOD && type != AbcA::kFloat16POD; };
            if (source != target && !(converts(source) && converts(target))) {
                EXPECT_EQ(error_of([&] { read_as(*array, converted); }),
                          "Cannot convert the data to or from a string, wstring or float16_t.");
                continue;
            }
            read_as(*array, converted);
            read_as(*same, expected);
            const AbcA::DataType& type = converted->getDataType();
            EXPECT_EQ(stored_values::store(type, converted->getData(), converted->size()).bytes,
                      stored_values::store(type, expected->getData(), expected->size()).bytes)
                << header.getName() << " as " << AbcA::PODName(target);
            ++conversions;
        }
    }
    EXPECT_GT(conversions, 50);
}

TEST_F(Hdf5Reader, AnswersWrongRequestsAsOgawaDoes)
{
    const auto answers = [](const AbcA::ArchiveReaderPtr& archive) {
        const auto top = archive->getTop();
        const auto many = top->getChild("many");
        const auto compound = many->getProperties();
        const auto array = compound->getArrayProperty("int32_t1s");
        AbcA::ArraySamplePtr sample;
        EXPECT_EQ(top->getChild("absent"), nullptr);
        EXPECT_EQ(top->getChildHeader("absent"), nullptr);
        EXPECT_EQ(top->getParent(), nullptr);
        EXPECT_EQ(many->getParent()->getFullName(), "/");
        EXPECT_EQ(compound->getScalarProperty("absent"), nullptr);
        EXPECT_EQ(compound->getPropertyHeader("absent"), nullptr);
        EXPECT_EQ(compound->getParent(), nullptr);
        return std::vector<std::string>{
            error_of([&] { top->getChild(99); }),
            error_of([&] { top->getChildHeader(99); }),
            error_of([&] { compound->getPropertyHeader(99); }),
            error_of([&] { compound->getScalarProperty(".inner"); }),
            error_of([&] { compound->getArrayProperty("int32_t1"); }),
            error_of([&] { compound->getCompoundProperty("int32_t1s"); }),
            error_of([&] { array->getSample(-1, sample); }),
            error_of([&] { array->getSample(99, sample); }),
            error_of([&] { archive->getTimeSampling(99); }),
            std::to_string(archive->getMaxNumSamplesForTimeSamplingIndex(99)),
        };
    };
    EXPECT_EQ(answers(open_hdf5(archive_.hdf5)), answers(open_ogawa(archive_.ogawa)));

    AbcA::Digest digest;
    EXPECT_FALSE(open_hdf5(archive_.hdf5)->getTop()->getPropertiesHash(digest));
    EXPECT_FALSE(open_hdf5(archive_.hdf5)->getTop()->getChildrenHash(digest));
}

TEST_F(Hdf5Reader, SharesSamplesThroughACacheOnly)
{
    const auto read = [](const AbcA::ArchiveReaderPtr& archive) {
        AbcA::ArraySamplePtr sample;
        const auto compound = properties_of(archive);
        for (std::size_t i = 0; i < compound->getNumProperties() && !sample; ++i)
            if (compound->getPropertyHeader(i).isArray() && compound->getArrayProperty(i)->getNumSamples() > 0)
                compound->getArrayProperty(i)->getSample(0, sample);
        return sample;
    };
    const auto plain = open_hdf5(archive_.hdf5);
    EXPECT_NE(read(plain), read(plain));

    const auto cache = Alembic::AbcCoreHDF5::CreateCache();
    const auto cached = open_hdf5(archive_.hdf5, cache);
    EXPECT_EQ(cached->getReadArraySampleCachePtr(), cache);
    const auto sample = read(cached);
    EXPECT_EQ(read(cached), sample);
    EXPECT_EQ(read(open_hdf5(archive_.hdf5, cache)), sample) << "archives share a cache";
    EXPECT_EQ(archive_text(*cached), archive_text(*plain));
}

TEST_F(Hdf5Reader, IsWhatTheFactoryOpensHdf5ArchivesWith)
{
    Alembic::AbcCoreFactory::IFactory factory;
    Alembic::AbcCoreFactory::IFactory::CoreType type = Alembic::AbcCoreFactory::IFactory::kUnknown;
    const auto archive = factory.getArchive(archive_.hdf5, type);
    EXPECT_TRUE(archive.valid());
    EXPECT_EQ(type, Alembic::AbcCoreFactory::IFactory::kHDF5);
    EXPECT_EQ(archive.getName(), archive_.hdf5);

    const auto layers = factory.getArchive({archive_.ogawa, archive_.hdf5}, type);
    EXPECT_EQ(type, Alembic::AbcCoreFactory::IFactory::kLayer);
    EXPECT_EQ(layers.getTop().getNumChildren(), archive.getTop().getNumChildren());
}

TEST_F(Hdf5Reader, RefusesWhatIsNoArchive)
{
    const std::string other = scratch_.folder() + "/other.abc";
    EXPECT_EQ(error_of([&] { open_hdf5(other); }).find("Nonexistent or not an Alembic file: " + other), 0u);
    EXPECT_THAT(error_of([&] { open_hdf5(archive_.ogawa); }), StartsWith("Nonexistent or not an Alembic file: "));
    EXPECT_THAT(error_of([&] { Alembic::AbcCoreHDF5::WriteArchive()(other, AbcA::MetaData()); }),
                HasSubstr("AbcCoreOgawa::WriteArchive"));

    change([](hid_t file) { H5Ldelete(file, "ABC", H5P_DEFAULT); });
    EXPECT_THAT(error_of([&] { open_hdf5(archive_.hdf5); }), HasSubstr("has no group 'ABC'"));
    change([](hid_t file) { H5Adelete(file, "abc_version"); });
    EXPECT_EQ(error_of([&] { open_hdf5(archive_.hdf5); }), "Unsupported file version detected: -2147483647");
    const std::int32_t version = -7;
    change([&](hid_t file) {
        hdf5_archives::write_attribute(file, "abc_version", H5T_STD_I32LE, H5T_NATIVE_INT32, &version, 1);
    });
    EXPECT_EQ(error_of([&] { open_hdf5(archive_.hdf5); }), "Unsupported file version detected: -7");
}

TEST_F(Hdf5Reader, RefusesHeadersAndSamplesThatDoNotFit)
{
    using hdf5_archives::write_words;
    const std::uint32_t type = AbcA::kInt32POD << 2 | 1 << 8;
    const std::string float_data = "/ABC/a few/.prop";
    struct Case
    {
        std::vector<std::uint32_t> words;
        const char* error;
    };
    const Case cases[] = {
        {{1 | AbcA::kInt32POD << 2}, "Degenerate extent 0"},
        {{1 | 14 << 2 | 1 << 8}, "Read invalid POD type: 14"},
        {{1 | type, 5, 3}, "Corrupt sampling information for property: odd"},
        {{1 | type, 5, 3, 2}, "Corrupt sampling information for property: odd"},
        {{1 | type, 5, 3, 6}, "Corrupt sampling information for property: odd"},
        {{1 | type | 0x40, 1, 9}, "Invalid index provided to getTimeSampling."},
        {{1 | type, 3}, "Invalid property: odd, missing smp0"},
        {{2 | type, 3}, "Invalid property: odd, missing smp1"},
        {{2 | type | 0x80, 3}, "Invalid property: odd, missing smp1"},
        {{1 | type, 1, 1, 1, 1, 1}, "Corrupt header of property: odd"},
    };
    for (const Case& wrong : cases) {
        change([&](hid_t file) {
            const hdf5_archives::Id group(H5Gopen2(file, float_data.c_str(), H5P_DEFAULT), H5Gclose);
            if (H5Aexists(group, "odd.info") > 0) H5Adelete(group, "odd.info");
            write_words(group, "odd.info", wrong.words);
        });
        const auto archive = open_hdf5(archive_.hdf5);
        EXPECT_THAT(error_of([&] {
                        const auto odd = archive->getTop()->getChild("a few")->getProperties()->getProperty("odd");
                        AbcA::ArraySamplePtr sample;
                        std::int32_t value = 0;
                        odd->isScalar() ? odd->asScalarPtr()->getSample(0, &value)
                                        : odd->asArrayPtr()->getSample(0, sample);
                    }),
                    StartsWith(wrong.error));
    }
    change([&](hid_t file) {
        const hdf5_archives::Id group(H5Gopen2(file, float_data.c_str(), H5P_DEFAULT), H5Gclose);
        H5Adelete(group, "odd.info");
        write_words(group, "odd.info", {1 | type, 3});
        write_words(group, "odd.smp0", {3});
    });
    std::int32_t value = 0;
    const auto unsigned_one = open_hdf5(archive_.hdf5)->getTop()->getChild("a few")->getProperties();
    EXPECT_EQ(error_of([&] { unsigned_one->getScalarProperty("odd")->getSample(0, &value); }),
              "File DataType clash for scalar attribute: odd");
}

TEST_F(Hdf5Reader, FollowsNoLinksToOtherPlacesAndNoCircles)
{
    change([&](hid_t file) {
        H5Lcreate_soft("/ABC/many", file, "/ABC/soft", H5P_DEFAULT, H5P_DEFAULT);
        H5Lcreate_external("elsewhere.abc", "/ABC", file, "/ABC/external", H5P_DEFAULT, H5P_DEFAULT);
        H5Lcreate_hard(file, "/ABC", file, "/ABC/many/circle", H5P_DEFAULT, H5P_DEFAULT);
    });
    const auto top = open_hdf5(archive_.hdf5)->getTop();
    EXPECT_EQ(top->getNumChildren(), 5u);
    EXPECT_THAT(error_of([&] { top->getChild("soft"); }), HasSubstr("link to another place"));
    EXPECT_THAT(error_of([&] { top->getChild("external"); }), HasSubstr("link to another place"));
    EXPECT_THAT(error_of([&] { top->getChild("many")->getChild("circle"); }), HasSubstr("its own ancestors"));
}

TEST_F(Hdf5Reader, OpensARewrittenFileAfresh)
{
    const auto before = open_hdf5(archive_.hdf5);
    const std::string text = archive_text(*before);
    const RandomArchive other(scratch_.folder(), {2});
    // In place: the same inode, so libhdf5's own drivers would take it for the file that is open already.
    std::filesystem::copy_file(other.hdf5, archive_.hdf5, std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(archive_text(*open_hdf5(archive_.hdf5)), archive_text(*open_hdf5(other.hdf5)));
}

TEST_F(Hdf5Reader, LeavesTheCallersErrorPrintingAsItWas)
{
    static int printed = 0;
    const H5E_auto2_t print = [](hid_t, void*) { return ++printed, herr_t(0); };
    H5E_auto2_t before = nullptr, now = nullptr;
    void *data_before = nullptr, *data_now = nullptr;
    H5Eget_auto2(H5E_DEFAULT, &before, &data_before);
    H5Eset_auto2(H5E_DEFAULT, print, &printed);
    EXPECT_NE(error_of([&] { open_hdf5(scratch_.folder() + "/absent.abc"); }), "");
    EXPECT_NE(archive_text(*open_hdf5(archive_.hdf5)), "");
    H5Eget_auto2(H5E_DEFAULT, &now, &data_now);
    H5Eset_auto2(H5E_DEFAULT, before, data_before);
    EXPECT_EQ(now, print);
    EXPECT_EQ(data_now, &printed);
    EXPECT_EQ(printed, 0);
}

TEST_F(Hdf5Reader, ManyThreadsReadWithoutALock)
{
    const RandomArchive other(scratch_.folder(), {3}, hdf5_archives::Form::DEFLATED);
    const std::string texts[] = {archive_text(*open_ogawa(archive_.ogawa)), archive_text(*open_ogawa(other.ogawa))};
    const auto shared = open_hdf5(archive_.hdf5);
    std::vector<std::thread> threads;
    std::vector<int> wrong(8);
    for (std::size_t i = 0; i < wrong.size(); ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < 4; ++round) {
                wrong[i] += archive_text(*shared) != texts[0];
                wrong[i] += archive_text(*open_hdf5(other.hdf5)) != texts[1];
                wrong[i] += error_of([&] { open_hdf5(archive_.ogawa); }).empty();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, std::vector<int>(wrong.size()));
}
