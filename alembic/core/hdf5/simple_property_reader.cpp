/// @file
/// Finds stored samples.
#include "core/hdf5/simple_property_reader.h"

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::size_t least_digits = 4;

std::string padded(std::uint64_t number)
{
    const std::string digits = std::to_string(number);
    return digits.size() < least_digits ? std::string(least_digits - digits.size(), '0') + digits : digits;
}

} // namespace

SamplePlace StoredSamples::place_of(File& file, hid_t group, const std::string& property, std::uint64_t index)
{
    if (index == 0) return {group, property + ".smp0"};
    if (!later_) later_ = file.open_linked(group, property + ".smpi", H5I_GROUP);
    if (!later_) ABCA_THROW("Invalid property: " << property << ", missing smpi");
    return {later_.id(), padded(index)};
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
