/// Writes random series of samples of a schema and keeps a model of what its properties must then hold.
#pragma once

#include "support/scratch_file.h"

#include <Alembic/AbcCoreOgawa/All.h>
#include <Alembic/AbcGeom/All.h>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace sample_series {

using namespace Alembic::AbcGeom;

inline IArchive open_archive(const ScratchFile& file)
{
    return IArchive(Alembic::AbcCoreOgawa::ReadArchive(), file.path());
}

/// Numbers of an array, whatever its type.
typedef std::vector<double> Numbers;

/// Samples point at the caller's arrays: these live until the series is written.
class Storage
{
public:
    template <class T>
    const std::vector<T>& keep(const Numbers& numbers)
    {
        auto kept = std::make_shared<std::vector<T>>(convert<T>(numbers));
        all_.push_back(kept);
        return *kept;
    }

private:
    template <class T>
    static std::vector<T> convert(const Numbers& numbers)
    {
        if constexpr (std::is_arithmetic_v<T>) {
            return std::vector<T>(numbers.begin(), numbers.end());
        } else {
            constexpr size_t dimensions = T::dimensions();
            std::vector<T> result(numbers.size() / dimensions);
            for (size_t i = 0; i < numbers.size(); ++i)
                result[i / dimensions][static_cast<int>(i % dimensions)] = static_cast<float>(numbers[i]);
            return result;
        }
    }

    std::deque<std::shared_ptr<void>> all_;
};

/// An array property, or geometry parameter without indices, of a schema with samples of type SAMPLE.
template <class SAMPLE>
struct SeriesPart
{
    std::string name;
    size_t extent;
    enum {
        REQUIRED,     ///< the first whole sample must have it
        STARTS_EMPTY, ///< where the first whole sample has none, an array without elements is written
        OPTIONAL,
        LATE_ONE_SHORT ///< optional; coming late it is filled up one sample short
    } kind;
    std::function<void(SAMPLE&, const Numbers&, Storage&)> give;
};

template <class SAMPLE>
using SeriesParts = std::vector<SeriesPart<SAMPLE>>;

/// The samples of one property as the rules of late, repeated and absent parts make them.
class PropertyModel
{
public:
    void give(size_t samples_before, const Numbers& values)
    {
        if (samples_.empty()) samples_.resize(samples_before);
        samples_.push_back(values);
    }
    void repeat()
    {
        if (!samples_.empty()) samples_.push_back(Numbers(samples_.back()));
    }
    const std::vector<Numbers>& samples() const { return samples_; }

private:
    std::vector<Numbers> samples_;
};

inline Numbers numbers_of(const IArrayProperty& property, size_t index)
{
    AbcA::ArraySamplePtr sample;
    property.get(sample, index);
    Numbers numbers(sample->size() * sample->getDataType().getExtent());
    if (!numbers.empty()) IArrayProperty(property).getAs(numbers.data(), kFloat64POD, index);
    return numbers;
}

/// Writes `sample_count` random samples into the object's schema and checks the compound that is read back.
/// `is_mesh` says which samples are partial: those of meshes also lack indices and counts.
template <class OBJECT, class SAMPLE>
void check_random_series(unsigned seed, const SeriesParts<SAMPLE>& parts, bool is_mesh, bool is_sparse)
{
    SCOPED_TRACE("seed " + std::to_string(seed) + (is_sparse ? ", sparse" : ""));
    ScratchFile file("series.abc");
    std::mt19937 engine(seed);
    std::map<std::string, PropertyModel> models;
    const size_t sample_count = 1 + engine() % 6;
    const unsigned rarity = 1 + engine() % 4;
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        OBJECT object(archive.getTop(), "o", archive.addTimeSampling(TimeSampling(0.25, 1.0)),
                      is_sparse ? kSparse : kFull);
        for (size_t index = 0; index < sample_count; ++index) {
            SAMPLE sample;
            Storage storage;
            std::map<std::string, Numbers> given;
            for (const auto& part : parts) {
                if (engine() % rarity != 0 && (is_sparse || index > 0 || part.kind != part.REQUIRED)) continue;
                Numbers numbers(part.extent * (engine() % 5));
                for (double& number : numbers)
                    number = engine() % 100;
                part.give(sample, numbers, storage);
                given[part.name] = numbers;
            }
            const bool has_base =
                given.count("P") || (is_mesh && (given.count(".faceIndices") || given.count(".faceCounts")));
            const bool is_partial = is_sparse || (!has_base && !given.empty());
            EXPECT_EQ(sample.isPartialSample(), !has_base && !given.empty());
            object.getSchema().set(sample);
            for (const auto& part : parts) {
                PropertyModel& model = models[part.name];
                const size_t samples_before = part.kind == part.LATE_ONE_SHORT && index > 0 ? index - 1 : index;
                if (given.count(part.name))
                    model.give(samples_before, given[part.name]);
                else if (!is_partial && part.kind == part.STARTS_EMPTY && model.samples().empty())
                    model.give(index, Numbers());
                else if (!is_partial || part.name == "P")
                    model.repeat();
            }
            EXPECT_EQ(object.getSchema().getNumSamples(), index + 1);
            if (!is_sparse && engine() % 4 == 0) {
                object.getSchema().setFromPrevious();
                for (auto& model : models)
                    model.second.repeat();
                break;
            }
        }
    }
    const IObject object = open_archive(file).getTop().getChild("o");
    const ICompoundProperty compound(object.getProperties(), ".geom");
    for (const auto& part : parts) {
        const std::vector<Numbers>& expected = models[part.name].samples();
        SCOPED_TRACE(part.name);
        const AbcA::PropertyHeader* header = compound.getPropertyHeader(part.name);
        if (!header) {
            EXPECT_TRUE(expected.empty());
            EXPECT_TRUE(is_sparse || part.kind == part.OPTIONAL || part.kind == part.LATE_ONE_SHORT);
            continue;
        }
        const IArrayProperty property(compound, part.name);
        ASSERT_EQ(property.getNumSamples(), expected.size());
        for (size_t i = 0; i < expected.size(); ++i)
            EXPECT_EQ(numbers_of(property, i), expected[i]) << "sample " << i;
        if (expected.size() > 1) {
            EXPECT_EQ(property.getTimeSampling()->getSampleTime(0), 1.0);
        }
    }
}

} // namespace sample_series
