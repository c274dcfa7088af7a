/// @file
/// The table of types.
#include "core/hdf5/pod_types.h"

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// A type that libhdf5 owns.
Handle predefined(hid_t type)
{
    return Handle(type, [](hid_t) { return herr_t(0); });
}

Handle copy_of(hid_t type)
{
    return require(Handle(H5Tcopy(type), H5Tclose), "Could not copy a data type");
}

/// One bit of an unsigned byte.
Handle bool_type(hid_t byte)
{
    Handle type = copy_of(byte);
    if (H5Tset_size(type.id(), 1) < 0 || H5Tset_precision(type.id(), 1) < 0 || H5Tset_offset(type.id(), 0) < 0 ||
        H5Tset_sign(type.id(), H5T_SGN_NONE) < 0 || H5Tset_pad(type.id(), H5T_PAD_ZERO, H5T_PAD_ZERO) < 0)
        throw_failed("Could not make the type of bools");
    return type;
}

/// The fields of a half in two bytes. The bias of the exponent stays that of a float, which is wrong: this type is only
/// good for copying bits.
Handle half_type(hid_t real)
{
    Handle type = copy_of(real);
    if (H5Tset_fields(type.id(), 15, 10, 5, 0, 10) < 0 || H5Tset_size(type.id(), 2) < 0)
        throw_failed("Could not make the type of halves");
    return type;
}

} // namespace

Handle file_type(AbcA::PlainOldDataType pod)
{
    switch (pod) {
    case AbcA::kBooleanPOD:
        return bool_type(H5T_STD_U8LE);
    case AbcA::kUint8POD:
        return predefined(H5T_STD_U8LE);
    case AbcA::kInt8POD:
    case AbcA::kStringPOD:
        return predefined(H5T_STD_I8LE);
    case AbcA::kUint16POD:
        return predefined(H5T_STD_U16LE);
    case AbcA::kInt16POD:
        return predefined(H5T_STD_I16LE);
    case AbcA::kUint32POD:
        return predefined(H5T_STD_U32LE);
    case AbcA::kInt32POD:
    case AbcA::kWstringPOD:
        return predefined(H5T_STD_I32LE);
    case AbcA::kUint64POD:
        return predefined(H5T_STD_U64LE);
    case AbcA::kInt64POD:
        return predefined(H5T_STD_I64LE);
    case AbcA::kFloat16POD:
        return half_type(H5T_IEEE_F32LE);
    case AbcA::kFloat32POD:
        return predefined(H5T_IEEE_F32LE);
    case AbcA::kFloat64POD:
        return predefined(H5T_IEEE_F64LE);
    default:
        ABCA_THROW("There are no stored values of type " << static_cast<int>(pod));
    }
}

Handle memory_type(AbcA::PlainOldDataType pod)
{
    switch (pod) {
    case AbcA::kBooleanPOD:
        return bool_type(H5T_NATIVE_UINT8);
    case AbcA::kUint8POD:
        return predefined(H5T_NATIVE_UINT8);
    case AbcA::kInt8POD:
    case AbcA::kStringPOD:
        return predefined(H5T_NATIVE_INT8);
    case AbcA::kUint16POD:
        return predefined(H5T_NATIVE_UINT16);
    case AbcA::kInt16POD:
        return predefined(H5T_NATIVE_INT16);
    case AbcA::kUint32POD:
        return predefined(H5T_NATIVE_UINT32);
    case AbcA::kInt32POD:
    case AbcA::kWstringPOD:
        return predefined(H5T_NATIVE_INT32);
    case AbcA::kUint64POD:
        return predefined(H5T_NATIVE_UINT64);
    case AbcA::kInt64POD:
        return predefined(H5T_NATIVE_INT64);
    case AbcA::kFloat16POD:
        return half_type(H5T_NATIVE_FLOAT);
    case AbcA::kFloat32POD:
        return predefined(H5T_NATIVE_FLOAT);
    case AbcA::kFloat64POD:
        return predefined(H5T_NATIVE_DOUBLE);
    default:
        ABCA_THROW("There are no stored values of type " << static_cast<int>(pod));
    }
}

std::uint64_t stored_size(AbcA::PlainOldDataType pod)
{
    if (pod == AbcA::kStringPOD) return 1;
    return pod == AbcA::kWstringPOD ? sizeof(std::int32_t) : AbcA::PODNumBytes(pod);
}

void require_type(hid_t stored, AbcA::PlainOldDataType pod, const char* kind, const std::string& name)
{
    if (H5Tequal(stored, file_type(pod).id()) <= 0) ABCA_THROW("File DataType clash for " << kind << ": " << name);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
