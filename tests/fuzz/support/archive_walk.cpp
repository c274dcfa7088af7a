/// The walk over the core layer, and both walks over bytes.
#include "archive_walk.h"

#include "walk_budget.h"

#include <Alembic/AbcCoreOgawa/All.h>

#include <algorithm>
#include <sstream>
#include <vector>

namespace vo_fuzz {

namespace {

namespace AbcA = Alembic::AbcCoreAbstract;
using Alembic::AbcCoreAbstract::index_t;

class CoreWalk : public WalkBudget
{
public:
    using WalkBudget::WalkBudget;

    void walk(AbcA::ObjectReader& object, int depth)
    {
        if (!spend() || depth > most_depth) return;
        ++report_.objects;
        attempt([&] { walk_compound(*object.getProperties(), 0); });
        attempt([&] {
            AbcA::Digest digest;
            object.getPropertiesHash(digest);
            object.getChildrenHash(digest);
            for (std::size_t i = 0; i < object.getNumChildren() && left(); ++i) {
                const std::string name = object.getChildHeader(i).getName();
                attempt([&] {
                    object.getChildHeader(name);
                    walk(*object.getChild(i), depth + 1);
                    object.getChild(name);
                });
            }
        });
    }

    /// Follows first children as far down as there are any, and the first properties of each.
    void descend(AbcA::ObjectReaderPtr object)
    {
        attempt([&] {
            descend_properties(*object);
            while (object->getNumChildren() > 0 && spend()) {
                object = object->getChild(0);
                descend_properties(*object);
            }
        });
    }

private:
    void descend_properties(AbcA::ObjectReader& object)
    {
        attempt([&] {
            AbcA::CompoundPropertyReaderPtr compound = object.getProperties();
            while (compound && compound->getNumProperties() > 0 && spend())
                compound = compound->getPropertyHeader(0).isCompound()
                               ? compound->getCompoundProperty(compound->getPropertyHeader(0).getName())
                               : nullptr;
        });
    }

    void walk_compound(AbcA::CompoundPropertyReader& compound, int depth)
    {
        if (depth > most_depth) return;
        for (std::size_t i = 0; i < compound.getNumProperties() && spend(); ++i) {
            const AbcA::PropertyHeader header = compound.getPropertyHeader(i);
            ++report_.properties;
            attempt([&] {
                if (header.isCompound())
                    walk_compound(*compound.getCompoundProperty(header.getName()), depth + 1);
                else if (header.isScalar())
                    read_scalar(*compound.getScalarProperty(header.getName()));
                else
                    read_array(*compound.getArrayProperty(header.getName()));
            });
        }
    }

    void read_scalar(AbcA::ScalarPropertyReader& property)
    {
        property.isConstant();
        const AbcA::DataType type = property.getDataType();
        expect_refusal(property, nullptr);
        for (const index_t index : sample_indices(property.getNumSamples()))
            attempt([&] {
                std::vector<std::string> strings(type.getExtent());
                std::vector<std::wstring> wide(type.getExtent());
                std::vector<double> numbers(type.getExtent());
                void* const into = type.getPod() == AbcA::kStringPOD    ? static_cast<void*>(strings.data())
                                   : type.getPod() == AbcA::kWstringPOD ? static_cast<void*>(wide.data())
                                                                        : numbers.data();
                property.getSample(index, into);
                spend_sample(type.getNumBytes());
            });
    }

    void read_array(AbcA::ArrayPropertyReader& property)
    {
        property.isConstant();
        property.isScalarLike();
        const AbcA::DataType type = property.getDataType();
        AbcA::ArraySamplePtr none;
        expect_refusal(property, none);
        for (const index_t index : sample_indices(property.getNumSamples()))
            attempt([&] {
                AbcA::ArraySamplePtr sample;
                AbcA::ArraySampleKey key;
                AbcA::Dimensions dimensions;
                property.getKey(index, key);
                property.getDimensions(index, dimensions);
                property.getSample(index, sample);
                use(*sample);
                if (!spend_sample(sample->size() * type.getNumBytes())) return;
                if (dimensions.numPoints() != sample->size()) fail("dimensions and sample disagree");
                if (type.getPod() >= AbcA::kStringPOD) return;
                std::vector<double> converted(sample->size() * type.getExtent());
                property.getAs(index, converted.data(), AbcA::kFloat64POD);
                std::vector<std::int8_t> bytes(converted.size());
                property.getAs(index, bytes.data(), AbcA::kInt8POD);
            });
    }

    /// A sample that is not there must be refused, whatever the header says.
    template <class Property, class... Into>
    void expect_refusal(Property& property, Into&&... into)
    {
        for (const index_t index : {index_t(-1), static_cast<index_t>(property.getNumSamples())}) {
            bool refused = false;
            try {
                property.getSample(index, into...);
            } catch (const std::exception&) {
                refused = true;
            }
            if (!refused) fail("a sample beyond the last was read");
        }
    }

    /// Looks at every element, so that the sanitizers see whether it is there.
    static void use(const AbcA::ArraySample& sample)
    {
        const std::size_t count = sample.size() * sample.getDataType().getExtent();
        std::size_t sum = 0;
        if (sample.getDataType().getPod() == AbcA::kStringPOD) {
            for (std::size_t i = 0; i < count; ++i)
                sum += static_cast<const std::string*>(sample.getData())[i].size();
        } else if (sample.getDataType().getPod() == AbcA::kWstringPOD) {
            for (std::size_t i = 0; i < count; ++i)
                sum += static_cast<const std::wstring*>(sample.getData())[i].size();
        } else {
            const auto* bytes = static_cast<const unsigned char*>(sample.getData());
            for (std::size_t i = 0; i < sample.size() * sample.getDataType().getNumBytes(); ++i)
                sum += bytes[i];
        }
        volatile std::size_t seen = sum;
        (void)seen;
    }
};

} // namespace

WalkReport walk_core(const AbcA::ArchiveReaderPtr& archive)
{
    WalkReport report;
    CoreWalk walk(report);
    walk.attempt([&] {
        for (std::uint32_t i = 0; i < std::min(archive->getNumTimeSamplings(), 100u); ++i)
            archive->getMaxNumSamplesForTimeSamplingIndex(i);
        archive->getArchiveVersion();
        walk.descend(archive->getTop());
        walk.walk(*archive->getTop(), 0);
    });
    return report;
}

WalkReport walk_bytes(const std::string& bytes, bool match_all)
{
    WalkReport all;
    std::istringstream stream(bytes);
    try {
        const AbcA::ArchiveReaderPtr archive = Alembic::AbcCoreOgawa::ReadArchive({&stream})("bytes");
        all = walk_core(archive);
        using Handler = Alembic::Abc::ErrorHandler;
        // Handles that print do what quiet ones do; one round is enough to see that.
        for (const Handler::Policy policy : {Handler::kThrowPolicy, Handler::kQuietNoopPolicy}) {
            const WalkReport report = walk_typed(archive, policy, match_all);
            all.errors.insert(report.errors.begin(), report.errors.end());
        }
    } catch (const std::exception& error) {
        WalkBudget(all).note(error.what());
    }
    return all;
}

} // namespace vo_fuzz
