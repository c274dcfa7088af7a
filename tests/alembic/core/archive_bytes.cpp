/// Archives described as text.
#include "archive_bytes.h"

#include <algorithm>

namespace vo_test {

namespace {

constexpr std::size_t most_samples = 6; // a damaged count may say four thousand million

template <class Value>
void describe_values(std::ostream& text, const void* values, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        text << ' ' << +static_cast<const Value*>(values)[i];
}

void describe_values(std::ostream& text, const AbcA::DataType& type, const void* values, std::size_t points)
{
    const std::size_t count = points * type.getExtent();
    if (type.getPod() == AbcA::kStringPOD) {
        for (std::size_t i = 0; i < count; ++i)
            text << " '" << static_cast<const std::string*>(values)[i] << "'";
    } else if (type.getPod() == AbcA::kWstringPOD) {
        for (std::size_t i = 0; i < count; ++i)
            for (const wchar_t c : static_cast<const std::wstring*>(values)[i])
                text << ' ' << std::uint32_t(c);
    } else {
        describe_values<unsigned char>(text, values, points * type.getNumBytes());
    }
}

void describe_scalar(std::ostream& text, AbcA::ScalarPropertyReader& property)
{
    const AbcA::DataType& type = property.getDataType();
    for (std::size_t i = 0; i < std::min(property.getNumSamples(), most_samples); ++i) {
        std::vector<std::string> strings(type.getExtent());
        std::vector<std::wstring> wide(type.getExtent());
        std::vector<double> numbers(type.getExtent());
        void* const into = type.getPod() == AbcA::kStringPOD    ? static_cast<void*>(strings.data())
                           : type.getPod() == AbcA::kWstringPOD ? static_cast<void*>(wide.data())
                                                                : numbers.data();
        text << "\n  " << i << error_of([&] {
            property.getSample(static_cast<AbcA::index_t>(i), into);
            describe_values(text, type, into, 1);
        });
    }
}

void describe_array(std::ostream& text, AbcA::ArrayPropertyReader& property)
{
    for (std::size_t i = 0; i < std::min(property.getNumSamples(), most_samples); ++i)
        text << "\n  " << i << error_of([&] {
            AbcA::ArraySamplePtr sample;
            AbcA::ArraySampleKey key;
            const auto index = static_cast<AbcA::index_t>(i);
            property.getSample(index, sample);
            const bool has_key = property.getKey(index, key);
            AbcA::Dimensions dimensions;
            property.getDimensions(index, dimensions);
            if (dimensions != sample->getDimensions()) text << " TWO SHAPES";
            text << sample->getDimensions() << (has_key ? key.digest.str() : std::string("no key"));
            describe_values(text, sample->getDataType(), sample->getData(), sample->size());
            if (property.getDataType().getPod() >= AbcA::kStringPOD) return;
            std::vector<double> converted(sample->size() * property.getDataType().getExtent());
            property.getAs(index, converted.data(), AbcA::kFloat64POD);
            describe_values<double>(text, converted.data(), converted.size());
        });
}

void describe_compound(std::ostream& text, AbcA::CompoundPropertyReader& compound)
{
    for (std::size_t i = 0; i < compound.getNumProperties(); ++i) {
        const AbcA::PropertyHeader& header = compound.getPropertyHeader(i);
        text << "\n ." << header.getName() << ' ' << header.getDataType() << ' ' << header.getMetaData().serialize();
        text << error_of([&] {
            if (header.isScalar())
                describe_scalar(text, *compound.getScalarProperty(header.getName()));
            else if (header.isArray())
                describe_array(text, *compound.getArrayProperty(header.getName()));
            else
                describe_compound(text, *compound.getCompoundProperty(header.getName()));
        });
    }
    text << "\n .";
}

void describe_object(std::ostream& text, AbcA::ObjectReader& object)
{
    text << '\n' << object.getFullName() << ' ' << object.getMetaData().serialize();
    AbcA::Digest hash;
    if (object.getPropertiesHash(hash)) text << ' ' << hash;
    if (object.getChildrenHash(hash)) text << ' ' << hash;
    text << error_of([&] { describe_compound(text, *object.getProperties()); });
    text << error_of([&] {
        for (std::size_t i = 0; i < object.getNumChildren(); ++i) {
            const std::string name = object.getChildHeader(i).getName();
            text << error_of([&] { describe_object(text, *object.getChild(i)); });
            if (!object.getChildHeader(name)) text << " LOST";
        }
    });
}

} // namespace

std::string describe(const AbcA::ObjectReaderPtr& object)
{
    std::ostringstream text;
    describe_object(text, *object);
    return text.str();
}

} // namespace vo_test
