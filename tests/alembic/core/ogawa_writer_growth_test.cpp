/// What writing costs as samples become many or large: memory, and bytes in the file.
#include "ogawa_writing.h"

#include "support/scratch_file.h"

#include <Alembic/AbcCoreOgawa/All.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <streambuf>

#include <malloc.h>

namespace {

/// Swallows what is written, counts it, and can seek.
class Nowhere : public std::streambuf
{
public:
    std::streamoff size() const { return size_; }

protected:
    std::streamsize xsputn(const char*, std::streamsize count) override { return move_to(at_ + count), count; }
    int_type overflow(int_type) override { return move_to(at_ + 1), 0; }
    pos_type seekoff(off_type offset, std::ios::seekdir from, std::ios::openmode) override
    {
        return at_ = from == std::ios::beg ? offset : from == std::ios::cur ? at_ + offset : size_ + offset;
    }
    pos_type seekpos(pos_type position, std::ios::openmode) override { return at_ = position; }

private:
    void move_to(std::streamoff position) { size_ = std::max(size_, at_ = position); }
    std::streamoff at_ = 0;
    std::streamoff size_ = 0;
};

std::size_t bytes_in_use()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// Bytes in use at most during `count` calls of `append`, the number of the first of which is `first`.
std::size_t peak_of(std::uint32_t first, std::uint32_t count, const std::function<void(std::uint32_t)>& append)
{
    std::size_t peak = 0;
    for (std::uint32_t i = first; i < first + count; ++i) {
        append(i);
        if (i % 500 == 0) peak = std::max(peak, bytes_in_use());
    }
    return peak;
}

constexpr std::uint32_t warm_up = 300000; ///< more than twice the different samples that are remembered
constexpr std::uint32_t many = 600000;

/// Bytes for each sample that memory grew by over `many` samples, all different.
double growth_per_sample(bool is_array, const std::function<std::size_t(std::uint32_t)>& size_of_sample)
{
    Nowhere nowhere;
    std::ostream stream(&nowhere);
    const auto archive = Alembic::AbcCoreOgawa::WriteArchive()(&stream, AbcA::MetaData());
    const auto properties = archive->getTop()->getProperties();
    const auto array = properties->createArrayProperty("array", AbcA::MetaData(), int_type, 0);
    const auto scalar = properties->createScalarProperty("scalar", AbcA::MetaData(), int_type, 0);
    std::vector<std::int32_t> values(100);
    const auto append = [&](std::uint32_t i) {
        values[0] = std::int32_t(i);
        if (is_array)
            array->setSample(AbcA::ArraySample(values.data(), int_type, AbcA::Dimensions(size_of_sample(i))));
        else
            scalar->setSample(values.data());
    };
    const std::size_t before = peak_of(0, warm_up, append);
    const std::size_t after = peak_of(warm_up, many, append);
    return (double(after) - double(before)) / many;
}

std::string path_of_large(const ScratchFile& file, const std::vector<std::vector<float>>& samples)
{
    const auto archive = Alembic::AbcCoreOgawa::WriteArchive()(file.path(), AbcA::MetaData());
    const auto property =
        archive->getTop()->getProperties()->createArrayProperty("points", AbcA::MetaData(), point_type, 0);
    for (const std::vector<float>& sample : samples)
        property->setSample(array_of(sample, point_type));
    return file.path();
}

} // namespace

TEST(OgawaWriter, MemoryDoesNotGrowWithSamplesAtEvenDistancesAndLittleWithOthers)
{
    if (bytes_in_use() == 0) GTEST_SKIP() << "this allocator does not tell what is in use";
    EXPECT_LT(growth_per_sample(true, [](std::uint32_t) { return 3; }), 0.01);
    EXPECT_LT(growth_per_sample(false, {}), 0.01);
    std::mt19937 random(1);
    // 3 bytes a sample here; a buffer that grows by doubling holds up to twice that.
    EXPECT_LT(growth_per_sample(true, [&](std::uint32_t) { return 1 + random() % 100; }), 6.0);
}

TEST(OgawaWriter, ASampleThatStaysIsStoredOnceHoweverManyOthersAreWrittenMeanwhile)
{
    Nowhere nowhere;
    std::ostream stream(&nowhere);
    const auto archive = Alembic::AbcCoreOgawa::WriteArchive()(&stream, AbcA::MetaData());
    const auto properties = archive->getTop()->getProperties();
    const std::vector<std::int32_t> large(50000, 7);
    const auto still = properties->createArrayProperty("still", AbcA::MetaData(), int_type, 0);
    const auto moving = properties->createScalarProperty("moving", AbcA::MetaData(), int_type, 0);
    std::int32_t value = 0;
    for (int round = 0; round < 3; ++round) {
        still->setSample(array_of(large, int_type));
        for (int i = 0; i < 150000; ++i, ++value)
            moving->setSample(&value);
    }
    // And one that another property has all the time.
    for (int i = 0; i < 150000; ++i, ++value) {
        if (i % 50000 == 0)
            properties->createArrayProperty("same" + std::to_string(i), AbcA::MetaData(), int_type, 0)
                ->setSample(array_of(large, int_type));
        moving->setSample(&value);
    }
    EXPECT_LT(nowhere.size(), 2 * 200000 + value * 28 + 100000) << "stored at most twice, and 28 bytes for each other";
}

TEST(OgawaWriter, SamplesOfUnevenSizesAndDistancesAreAllReferredToInOrder)
{
    for (unsigned seed = 0; seed < 40; ++seed) {
        std::mt19937 random(seed);
        std::vector<std::vector<std::int32_t>> written(1 + random() % 300);
        const std::uint32_t different = 1 + random() % 20; // few: repeats, and references far back
        for (auto& sample : written)
            sample.assign(random() % different, std::int32_t(random() % different));
        ScratchFile file("uneven.abc");
        {
            const auto archive = Alembic::AbcCoreOgawa::WriteArchive()(file.path(), AbcA::MetaData());
            const auto property =
                archive->getTop()->getProperties()->createArrayProperty("a", AbcA::MetaData(), int_type, 0);
            for (const auto& sample : written)
                property->setSample(array_of(sample, int_type));
        }
        const auto archive = Alembic::AbcCoreOgawa::ReadArchive()(file.path());
        const auto property = archive->getTop()->getProperties()->getArrayProperty("a");
        ASSERT_EQ(property->getNumSamples(), written.size()) << "seed " << seed;
        for (std::size_t i = 0; i < written.size(); ++i) {
            AbcA::ArraySamplePtr sample;
            property->getSample(AbcA::index_t(i), sample);
            const auto* const values = static_cast<const std::int32_t*>(sample->getData());
            EXPECT_EQ(std::vector<std::int32_t>(values, values + sample->size()), written[i]) << seed << ", " << i;
        }
    }
}

TEST(OgawaWriter, LargeSamplesAreTakenForEqualOnlyWhenTheyAre)
{
    std::vector<float> base(600001 * 3); // 7 MB
    for (std::size_t i = 0; i < base.size(); ++i)
        base[i] = float(i % 1013);
    std::vector<std::vector<float>> samples = {base, base};
    std::mt19937 random(5);
    for (int i = 0; i < 4; ++i) { // one value somewhere is another one
        samples.push_back(base);
        samples.back()[random() % base.size()] = -1.0f;
    }
    samples.push_back(samples[2]);                                       // an equal one further back
    samples.push_back(std::vector<float>(base.begin(), base.end() - 3)); // only shorter
    ScratchFile file("large.abc");
    const std::string path = path_of_large(file, samples);
    EXPECT_LT(file.bytes().size(), 6 * base.size() * sizeof(float) + 5000);

    const auto archive = Alembic::AbcCoreOgawa::ReadArchive()(path);
    const auto property = archive->getTop()->getProperties()->getArrayProperty("points");
    for (std::size_t i = 0; i < samples.size(); ++i) {
        AbcA::ArraySamplePtr sample;
        property->getSample(AbcA::index_t(i), sample);
        ASSERT_EQ(sample->size() * 3, samples[i].size());
        EXPECT_EQ(std::memcmp(sample->getData(), samples[i].data(), samples[i].size() * sizeof(float)), 0) << i;
        AbcA::ArraySampleKey key;
        ASSERT_TRUE(property->getKey(AbcA::index_t(i), key));
        EXPECT_EQ(key.digest, array_of(samples[i], point_type).getKey().digest) << i;
    }
}
