/// @file
/// Reads attributes.
#include "core/hdf5/attribute.h"

#include "core/hdf5/limits.h"

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

Attribute::Attribute(hid_t owner, const std::string& name)
    : name_(name)
{
    const htri_t there = H5Aexists(owner, name.c_str());
    if (there == 0) return;
    const std::string failure = "Could not open attribute '" + name + "'";
    if (there < 0) throw_failed(failure);
    attribute_ = require(Handle(H5Aopen(owner, name.c_str(), H5P_DEFAULT), H5Aclose), failure);
    type_ = require(Handle(H5Aget_type(attribute_.id()), H5Tclose), failure);
    const Handle space = require(Handle(H5Aget_space(attribute_.id()), H5Sclose), failure);
    const hssize_t count = H5Sget_simple_extent_npoints(space.id());
    const std::size_t value_size = H5Tget_size(type_.id());
    if (count < 0 || value_size == 0) throw_failed(failure);
    count_ = static_cast<std::uint64_t>(count);
    if (value_size > max_attribute_bytes || count_ > max_attribute_bytes / value_size)
        ABCA_THROW(failure << ": it has " << count_ << " values of " << value_size << " bytes, more than "
                           << max_attribute_bytes << " bytes are not read");
}

void Attribute::read(hid_t memory_type, void* into) const
{
    if (H5Aread(attribute_.id(), memory_type, into) < 0) throw_failed("Could not read attribute '" + name_ + "'");
}

std::string Attribute::read_string() const
{
    if (H5Tget_class(type()) != H5T_STRING || H5Tis_variable_str(type()) != 0 || count_ != 1)
        ABCA_THROW("Attribute '" << name_ << "' is not a string of fixed length");
    // With the file's own type nothing is converted: there is no room for a closing zero, and libhdf5 would make some.
    std::string text(H5Tget_size(type()), '\0');
    read(type(), &text[0]);
    const std::size_t zero = text.find('\0');
    if (zero != std::string::npos) text.resize(zero);
    return text;
}

hid_t native_type(std::uint8_t)
{
    return H5T_NATIVE_UINT8;
}
hid_t native_type(std::int32_t)
{
    return H5T_NATIVE_INT32;
}
hid_t native_type(std::uint32_t)
{
    return H5T_NATIVE_UINT32;
}
hid_t native_type(std::int64_t)
{
    return H5T_NATIVE_INT64;
}
hid_t native_type(double)
{
    return H5T_NATIVE_DOUBLE;
}

AbcA::MetaData read_metadata(hid_t owner, const std::string& name)
{
    AbcA::MetaData metadata;
    const Attribute attribute(owner, name);
    if (attribute) metadata.deserialize(attribute.read_string());
    return metadata;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
