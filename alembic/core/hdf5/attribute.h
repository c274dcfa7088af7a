/// @file
/// Attributes of groups and data sets: small values with a name.
#pragma once

#include "core/hdf5/library.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// An open attribute. Its user holds a LibraryLock, also for the functions below.
class Attribute
{
public:
    /// Nothing when the owner has no attribute of that name. Throws when it is damaged or its value is too large.
    Attribute(hid_t owner, const std::string& name);

    explicit operator bool() const { return static_cast<bool>(attribute_); }
    const std::string& name() const { return name_; }

    /// The type of its values in the file.
    hid_t type() const { return type_.id(); }

    /// Values it has: 0 for a null space.
    std::uint64_t count() const { return count_; }

    /// Reads all values as `memory_type` to `into`.
    void read(hid_t memory_type, void* into) const;

    /// Its value as text: a string of fixed length that fills the attribute, ended early by a zero. Throws when it is
    /// of another type.
    std::string read_string() const;

private:
    std::string name_;
    Handle attribute_;
    Handle type_;
    std::uint64_t count_ = 0;
};

/// libhdf5's name for a type of ours.
hid_t native_type(std::uint8_t);
hid_t native_type(std::int32_t);
hid_t native_type(std::uint32_t);
hid_t native_type(std::int64_t);
hid_t native_type(double);

/// All values of an attribute; none when there is no such attribute.
template <class Number>
std::optional<std::vector<Number>> read_numbers(hid_t owner, const std::string& name)
{
    const Attribute attribute(owner, name);
    if (!attribute) return std::nullopt;
    std::vector<Number> numbers(static_cast<std::size_t>(attribute.count()));
    if (!numbers.empty()) attribute.read(native_type(Number()), numbers.data());
    return numbers;
}

/// The value of an attribute with one; nothing when there is no such attribute. Throws when it has several or none.
template <class Number>
std::optional<Number> read_number(hid_t owner, const std::string& name)
{
    const std::optional<std::vector<Number>> numbers = read_numbers<Number>(owner, name);
    if (!numbers) return std::nullopt;
    if (numbers->size() != 1) ABCA_THROW("Attribute '" << name << "' has " << numbers->size() << " values, not one");
    return numbers->front();
}

/// The metadata that an attribute holds; none when there is no such attribute.
AbcA::MetaData read_metadata(hid_t owner, const std::string& name);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
