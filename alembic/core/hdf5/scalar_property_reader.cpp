/// @file
/// Reads scalar samples, which are attributes.
#include "core/hdf5/scalar_property_reader.h"

#include "core/hdf5/attribute.h"
#include "core/hdf5/pod_types.h"
#include "core/hdf5/texts.h"

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// Texts that are stored as one run of characters.
void read_texts(const Attribute& attribute, const AbcA::DataType& type, void* into)
{
    with_text_types(type.getPod(), into, [&](auto unit, auto* texts) {
        std::vector<decltype(unit)> units(static_cast<std::size_t>(attribute.count()));
        if (!units.empty()) attribute.read(memory_type(type.getPod()).id(), units.data());
        split_texts(units, texts, type.getExtent(), attribute.name());
    });
}

} // namespace

void ScalarPropertyReader::getSample(AbcA::index_t sample, void* intoLocation)
{
    const LibraryLock lock;
    const SamplePlace place = place_of(sample);
    const Attribute attribute(place.group, place.name);
    if (!attribute) {
        const bool is_first = place.group == compound().group();
        ABCA_THROW("Invalid property: " << getName() << ", missing " << (is_first ? "smp0" : place.name));
    }
    const AbcA::DataType& type = getHeader().getDataType();
    if (type.getPod() == AbcA::kStringPOD && type.getExtent() == 1) {
        *static_cast<std::string*>(intoLocation) = attribute.read_string();
        return;
    }
    require_type(attribute.type(), type.getPod(), "scalar attribute", getName());
    if (AbcCoreCommon::is_text(type.getPod())) {
        read_texts(attribute, type, intoLocation);
        return;
    }
    if (attribute.count() != type.getExtent())
        ABCA_THROW("Invalid property: " << getName() << ", a sample has " << attribute.count() << " values, not "
                                        << static_cast<int>(type.getExtent()));
    attribute.read(memory_type(type.getPod()).id(), intoLocation);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
