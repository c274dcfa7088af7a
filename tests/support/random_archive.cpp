/// Writes random archives.
#include "random_archive.h"

#include <Alembic/AbcCoreOgawa/All.h>

#include <random>
#include <vector>

namespace vo_test {

namespace AbcA = Alembic::AbcCoreAbstract;

namespace {

class Generator
{
public:
    explicit Generator(const RandomContents& contents)
        : contents_(contents)
        , random_(contents.seed)
    {
    }

    void write(const std::string& path)
    {
        AbcA::MetaData metadata;
        metadata.set("title", "everything");
        const auto archive = Alembic::AbcCoreOgawa::WriteArchive()(path, metadata);
        archive->addTimeSampling(AbcA::TimeSampling(1.0 / 24.0, 0.5));
        archive->addTimeSampling(AbcA::TimeSampling(AbcA::TimeSamplingType(2, 1.0), {0.25, 0.75}));
        archive->addTimeSampling(AbcA::TimeSampling(AbcA::TimeSamplingType(AbcA::TimeSamplingType::kAcyclic),
                                                    {0.0, 0.5, 1.0, 4.0, 5.0, 6.0, 7.0, 8.0}));
        add_object(*archive->getTop(), "many", 0);
        add_object(*archive->getTop(), "a few", 2);
        archive->getTop()->createChild(AbcA::ObjectHeader("nothing", AbcA::MetaData()));
    }

private:
    int number(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random_); }

    void add_object(AbcA::ObjectWriter& parent, const std::string& name, int depth)
    {
        AbcA::MetaData metadata;
        if (depth != 1) metadata.set("schema", name + "_v1");
        const auto object = parent.createChild(AbcA::ObjectHeader(name, metadata));
        const auto top = object->getProperties();
        if (depth != 0) {
            add_property(*top, AbcA::kFloat32POD);
            if (depth < (contents_.all_types ? 4 : 3)) add_object(*object, "child" + std::to_string(depth), depth + 1);
            return;
        }
        for (int pod = AbcA::kBooleanPOD; pod <= AbcA::kWstringPOD; pod += contents_.all_types ? 1 : 4)
            add_property(*top, static_cast<AbcA::PlainOldDataType>(pod));
        const auto inner = top->createCompoundProperty(".inner", metadata);
        add_property(*inner->createCompoundProperty("innermost", AbcA::MetaData()), AbcA::kStringPOD);
        inner->createCompoundProperty("empty", metadata);
    }

    /// A scalar and an array property of each of two extents.
    void add_property(AbcA::CompoundPropertyWriter& compound, AbcA::PlainOldDataType pod)
    {
        for (const int extent : {1, 3}) {
            const AbcA::DataType type(pod, static_cast<std::uint8_t>(extent));
            const std::string name = std::string(AbcA::PODName(pod)) + std::to_string(extent);
            AbcA::MetaData metadata;
            if (number(2)) metadata.set("about", name);
            const auto scalar = compound.createScalarProperty(name, metadata, type, std::uint32_t(number(4)));
            const auto array = compound.createArrayProperty(name + "s", metadata, type, std::uint32_t(number(4)));
            const int count = number(7);
            for (int i = 0; i < count; ++i) {
                if (i > 0 && number(3) == 0) {
                    scalar->setFromPreviousSample();
                    array->setFromPreviousSample();
                    continue;
                }
                scalar->setSample(sample(type, AbcA::Dimensions(1))->getData());
                array->setSample(*sample(type, shape()));
            }
        }
    }

    AbcA::Dimensions shape()
    {
        AbcA::Dimensions shape(std::uint64_t(number(4) == 0 ? 1 : number(contents_.most_values)));
        if (number(3) == 0) {
            shape.setRank(2);
            shape[1] = std::uint64_t(1 + number(3));
        }
        return shape;
    }

    AbcA::ArraySamplePtr sample(const AbcA::DataType& type, const AbcA::Dimensions& shape)
    {
        const AbcA::ArraySamplePtr sample = AbcA::AllocateArraySample(type, shape);
        void* const data = const_cast<void*>(sample->getData());
        for (std::size_t i = 0; i < sample->size() * type.getExtent(); ++i)
            set(type.getPod(), data, i);
        return sample;
    }

    template <class Number>
    void set_number(void* data, std::size_t i, int below = 101)
    {
        static_cast<Number*>(data)[i] = Number(number(below));
    }

    void set(AbcA::PlainOldDataType pod, void* data, std::size_t i)
    {
        switch (pod) {
        case AbcA::kBooleanPOD:
            return set_number<std::uint8_t>(data, i, 2);
        case AbcA::kUint8POD:
        case AbcA::kInt8POD:
            return set_number<std::uint8_t>(data, i);
        case AbcA::kUint16POD:
        case AbcA::kInt16POD:
            return set_number<std::uint16_t>(data, i);
        case AbcA::kUint32POD:
        case AbcA::kInt32POD:
            return set_number<std::uint32_t>(data, i);
        case AbcA::kUint64POD:
        case AbcA::kInt64POD:
            return set_number<std::uint64_t>(data, i);
        case AbcA::kFloat16POD:
            static_cast<AbcA::float16_t*>(data)[i] = AbcA::float16_t(float(number(101)));
            return;
        case AbcA::kFloat32POD:
            return set_number<float>(data, i);
        case AbcA::kFloat64POD:
            return set_number<double>(data, i);
        case AbcA::kStringPOD:
            static_cast<std::string*>(data)[i] = std::string(std::size_t(number(9)), char('a' + number(26)));
            return;
        default:
            static_cast<std::wstring*>(data)[i] = std::wstring(std::size_t(number(9)), wchar_t(300 + number(26)));
        }
    }

    const RandomContents contents_;
    std::mt19937 random_;
};

} // namespace

void write_random_archive(const std::string& path, const RandomContents& contents)
{
    Generator(contents).write(path);
}

} // namespace vo_test
