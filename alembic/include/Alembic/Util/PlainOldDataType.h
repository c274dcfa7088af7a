/// The types that samples are made of: their numbers as stored, their names, their C++ types.
#pragma once

#include <Alembic/Util/Exception.h>
#include <Alembic/Util/Foundation.h>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

typedef unsigned char byte_t;

/// A truth value of exactly one byte, whatever the size of `bool`. Compared by truth: 1 and 2 are equal.
class bool_t
{
public:
    bool_t()
        : byte_(0)
    {
    }
    bool_t(bool tf)
        : byte_(tf ? 1 : 0)
    {
    }
    bool_t(byte_t b)
        : byte_(b)
    {
    }
    bool_t& operator=(bool tf)
    {
        byte_ = tf ? 1 : 0;
        return *this;
    }
    bool_t& operator=(byte_t b)
    {
        byte_ = b;
        return *this;
    }

    bool_t operator!() const { return bool_t(byte_ == 0); }
    bool asBool() const { return byte_ != 0; }
    operator bool() const { return byte_ != 0; }

private:
    byte_t byte_;
};
static_assert(sizeof(bool_t) == 1, "a stored boolean is one byte");

inline bool operator==(const bool_t& a, const bool_t& b)
{
    return a.asBool() == b.asBool();
}
inline bool operator==(const bool_t& a, bool b)
{
    return a.asBool() == b;
}
inline bool operator==(bool a, const bool_t& b)
{
    return a == b.asBool();
}
inline bool operator!=(const bool_t& a, const bool_t& b)
{
    return a.asBool() != b.asBool();
}
inline bool operator!=(const bool_t& a, bool b)
{
    return a.asBool() != b;
}
inline bool operator!=(bool a, const bool_t& b)
{
    return a != b.asBool();
}

typedef Imath::half float16_t;
typedef float float32_t;
typedef double float64_t;

/// The numbers are those in stored property headers.
enum PlainOldDataType {
    kBooleanPOD = 0,  ///< bool_t
    kUint8POD = 1,    ///< uint8_t
    kInt8POD = 2,     ///< int8_t
    kUint16POD = 3,   ///< uint16_t
    kInt16POD = 4,    ///< int16_t
    kUint32POD = 5,   ///< uint32_t
    kInt32POD = 6,    ///< int32_t
    kUint64POD = 7,   ///< uint64_t
    kInt64POD = 8,    ///< int64_t
    kFloat16POD = 9,  ///< float16_t
    kFloat32POD = 10, ///< float32_t
    kFloat64POD = 11, ///< float64_t
    kStringPOD = 12,  ///< std::string
    kWstringPOD = 13, ///< std::wstring

    kNumPlainOldDataTypes = 14, ///< a count, not a type

    kUnknownPOD = 127 ///< no type
};

/// Compile-time facts of one type.
template <PlainOldDataType ENUM, class T>
struct PODTraits
{
    static constexpr PlainOldDataType pod_enum = ENUM;
    typedef T value_type;

    static const char* name();                               ///< the stored name, e.g. `float32_t`
    static T default_value() { return T(); }                 ///< zero, false or empty
    static constexpr size_t numBytes() { return sizeof(T); } ///< bytes in memory
};

typedef PODTraits<kBooleanPOD, bool_t> BooleanPODTraits;
typedef PODTraits<kUint8POD, uint8_t> Uint8PODTraits;
typedef PODTraits<kInt8POD, int8_t> Int8PODTraits;
typedef PODTraits<kUint16POD, uint16_t> Uint16PODTraits;
typedef PODTraits<kInt16POD, int16_t> Int16PODTraits;
typedef PODTraits<kUint32POD, uint32_t> Uint32PODTraits;
typedef PODTraits<kInt32POD, int32_t> Int32PODTraits;
typedef PODTraits<kUint64POD, uint64_t> Uint64PODTraits;
typedef PODTraits<kInt64POD, int64_t> Int64PODTraits;
typedef PODTraits<kFloat16POD, float16_t> Float16PODTraits;
typedef PODTraits<kFloat32POD, float32_t> Float32PODTraits;
typedef PODTraits<kFloat64POD, float64_t> Float64PODTraits;
typedef PODTraits<kStringPOD, std::string> StringPODTraits;
typedef PODTraits<kWstringPOD, std::wstring> WstringPODTraits;

/// The traits of an enumerator, and those of a C++ type.
template <PlainOldDataType ENUM>
struct PODTraitsFromEnum;
template <class T>
struct PODTraitsFromType;

#define ALEMBIC_POD_TRAITS(TRAITS)                                                                                     \
    template <>                                                                                                        \
    struct PODTraitsFromEnum<TRAITS::pod_enum> : public TRAITS                                                         \
    {                                                                                                                  \
    };                                                                                                                 \
    template <>                                                                                                        \
    struct PODTraitsFromType<TRAITS::value_type> : public TRAITS                                                       \
    {                                                                                                                  \
    }
ALEMBIC_POD_TRAITS(BooleanPODTraits);
ALEMBIC_POD_TRAITS(Uint8PODTraits);
ALEMBIC_POD_TRAITS(Int8PODTraits);
ALEMBIC_POD_TRAITS(Uint16PODTraits);
ALEMBIC_POD_TRAITS(Int16PODTraits);
ALEMBIC_POD_TRAITS(Uint32PODTraits);
ALEMBIC_POD_TRAITS(Int32PODTraits);
ALEMBIC_POD_TRAITS(Uint64PODTraits);
ALEMBIC_POD_TRAITS(Int64PODTraits);
ALEMBIC_POD_TRAITS(Float16PODTraits);
ALEMBIC_POD_TRAITS(Float32PODTraits);
ALEMBIC_POD_TRAITS(Float64PODTraits);
ALEMBIC_POD_TRAITS(StringPODTraits);
ALEMBIC_POD_TRAITS(WstringPODTraits);
#undef ALEMBIC_POD_TRAITS

/// Bytes of one value in memory (`sizeof` the C++ type, also for strings); 0 for an unknown type.
ALEMBIC_EXPORT size_t PODNumBytes(PlainOldDataType pod);

/// The type's name, e.g. `float32_t`, `string`; `UNKNOWN` for anything that is not a type. Static text.
ALEMBIC_EXPORT const char* PODName(PlainOldDataType pod);

/// The inverse of PODName; kUnknownPOD for a name that is none.
ALEMBIC_EXPORT PlainOldDataType PODFromName(const std::string& n);

/// Assigns the default value to the live object of type POD at `address`.
template <PlainOldDataType POD>
void PODSetDefaultPOD(void* address)
{
    typedef typename PODTraitsFromEnum<POD>::value_type value_type;
    *static_cast<value_type*>(address) = PODTraitsFromEnum<POD>::default_value();
}

/// The same, with the type chosen at run time; an unknown type does nothing.
ALEMBIC_EXPORT void PODSetDefault(PlainOldDataType pod, void* bytes);

template <PlainOldDataType ENUM, class T>
const char* PODTraits<ENUM, T>::name()
{
    return PODName(ENUM);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
