/// Archives as text.
#include "archive_text.h"

#include "stored_values.h"

#include <algorithm>
#include <sstream>
#include <vector>

namespace vo_test {

namespace {

constexpr std::size_t most_samples = 64; // a damaged header may promise billions

class Describer
{
public:
    explicit Describer(AbcA::ArchiveReader& archive)
        : archive_(archive)
    {
        text_ << archive.getArchiveVersion() << '\n';
        for (std::uint32_t i = 0; i < archive.getNumTimeSamplings(); ++i) {
            const AbcA::TimeSampling& sampling = *archive.getTimeSampling(i);
            text_ << "sampling " << sampling.getTimeSamplingType() << " most "
                  << archive.getMaxNumSamplesForTimeSamplingIndex(i) << ':';
            for (const double time : sampling.getStoredTimes())
                text_ << ' ' << time;
            text_ << '\n';
        }
        add_object(*archive.getTop());
    }

    std::string text() const { return text_.str(); }

private:
    void add_object(AbcA::ObjectReader& object)
    {
        text_ << object.getFullName() << " {" << object.getMetaData().serialize() << "}\n";
        add_compound(*object.getProperties());
        for (std::size_t i = 0; i < object.getNumChildren(); ++i)
            add_object(*object.getChild(object.getChildHeader(i).getName()));
    }

    void add_compound(AbcA::CompoundPropertyReader& compound)
    {
        std::vector<std::string> names;
        for (std::size_t i = 0; i < compound.getNumProperties(); ++i)
            names.push_back(compound.getPropertyHeader(i).getName());
        std::sort(names.begin(), names.end());
        for (const std::string& name : names) {
            const AbcA::PropertyHeader& header = *compound.getPropertyHeader(name);
            text_ << name << ' ' << header.getPropertyType() << " {" << header.getMetaData().serialize() << "} ";
            if (header.isCompound()) {
                text_ << "(\n";
                add_compound(*compound.getCompoundProperty(name));
                text_ << ")\n";
                continue;
            }
            text_ << header.getDataType() << " sampling " << sampling_of(header);
            if (header.isScalar())
                add_scalar(*compound.getScalarProperty(name));
            else
                add_array(*compound.getArrayProperty(name));
        }
    }

    std::uint32_t sampling_of(const AbcA::PropertyHeader& header) const
    {
        std::uint32_t index = 0;
        while (archive_.getTimeSampling(index) != header.getTimeSampling())
            ++index;
        return index;
    }

    template <class Property>
    void add_samples(Property& property)
    {
        const double time = 1.3;
        text_ << " samples " << property.getNumSamples() << " constant " << property.isConstant();
        if (property.getNumSamples() > 0)
            text_ << " at " << time << ": " << property.getFloorIndex(time).first << ' '
                  << property.getCeilIndex(time).first << ' ' << property.getNearIndex(time).first;
    }

    void add_scalar(AbcA::ScalarPropertyReader& property)
    {
        add_samples(property);
        const AbcA::ArraySamplePtr value = AbcA::AllocateArraySample(property.getDataType(), AbcA::Dimensions(1));
        for (std::size_t i = 0; i < std::min(property.getNumSamples(), most_samples); ++i) {
            property.getSample(static_cast<AbcA::index_t>(i), const_cast<void*>(value->getData()));
            add_values(*value);
        }
        text_ << '\n';
    }

    void add_array(AbcA::ArrayPropertyReader& property)
    {
        add_samples(property);
        text_ << " like a scalar " << property.isScalarLike();
        for (std::size_t i = 0; i < std::min(property.getNumSamples(), most_samples); ++i) {
            const auto index = static_cast<AbcA::index_t>(i);
            AbcA::ArraySamplePtr sample, again;
            AbcA::ArraySampleKey key;
            AbcA::Dimensions shape;
            property.getSample(index, sample);
            property.getDimensions(index, shape);
            again = AbcA::AllocateArraySample(property.getDataType(), shape);
            property.getAs(index, const_cast<void*>(again->getData()), property.getDataType().getPod());
            text_ << "\n  " << property.getKey(index, key) << ' ' << key.digest.str() << ' ' << key.numBytes << " ("
                  << shape << ") (" << sample->getDimensions() << ')';
            add_values(*sample);
            add_values(*again);
        }
        text_ << '\n';
    }

    void add_values(const AbcA::ArraySample& sample)
    {
        text_ << " [";
        for (const char byte : stored_values::store(sample.getDataType(), sample.getData(), sample.size()).bytes)
            text_ << static_cast<int>(byte) << ' ';
        text_ << ']';
    }

    AbcA::ArchiveReader& archive_;
    std::ostringstream text_;
};

} // namespace

std::string archive_text(AbcA::ArchiveReader& archive)
{
    return Describer(archive).text();
}

} // namespace vo_test
