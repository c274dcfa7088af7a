/// The 54 property types: C++ type, stored type and interpretation of each.
#pragma once

#include <Alembic/Abc/Foundation.h>

#include <type_traits>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// A well-defined first value for each type: zero, false, "", the identity, the empty box.
template <class T>
struct DefaultValue
{
    static T get() { return T(); }
};
template <>
struct DefaultValue<float16_t>
{
    static float16_t get() { return float16_t(0.0f); }
};
template <class T>
struct DefaultValue<Imath::Vec2<T>>
{
    static Imath::Vec2<T> get() { return Imath::Vec2<T>(T(0)); }
};
template <class T>
struct DefaultValue<Imath::Vec3<T>>
{
    static Imath::Vec3<T> get() { return Imath::Vec3<T>(T(0)); }
};
template <class T>
struct DefaultValue<Imath::Color3<T>>
{
    static Imath::Color3<T> get() { return Imath::Color3<T>(T(0)); }
};
template <class T>
struct DefaultValue<Imath::Color4<T>>
{
    static Imath::Color4<T> get() { return Imath::Color4<T>(T(0)); }
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic

/// Declares a traits struct: elements of C++ type `VALUE` are `EXTENT` numbers of type `POD`; `INTERPRETATION` is the
/// metadata by which it differs from other types of the same numbers, or "".
#define ALEMBIC_ABC_DECLARE_TYPE_TRAITS(VALUE, POD, EXTENT, INTERPRETATION, NAME)                                      \
    struct ALEMBIC_EXPORT NAME                                                                                         \
    {                                                                                                                  \
        typedef VALUE value_type;                                                                                      \
        static constexpr ::Alembic::Util::PlainOldDataType pod_enum = POD;                                             \
        static constexpr int extent = EXTENT;                                                                          \
        static const char* interpretation() { return INTERPRETATION; }                                                 \
        static const char* name() { return #NAME; }                                                                    \
        static ::Alembic::AbcCoreAbstract::DataType dataType()                                                         \
        {                                                                                                              \
            return ::Alembic::AbcCoreAbstract::DataType(POD, EXTENT);                                                  \
        }                                                                                                              \
        static value_type defaultValue() { return ::Alembic::Abc::DefaultValue<value_type>::get(); }                   \
    }

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

ALEMBIC_ABC_DECLARE_TYPE_TRAITS(bool_t, kBooleanPOD, 1, "", BooleanTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(uint8_t, kUint8POD, 1, "", Uint8TPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(int8_t, kInt8POD, 1, "", Int8TPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(uint16_t, kUint16POD, 1, "", Uint16TPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(int16_t, kInt16POD, 1, "", Int16TPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(uint32_t, kUint32POD, 1, "", Uint32TPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(int32_t, kInt32POD, 1, "", Int32TPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(uint64_t, kUint64POD, 1, "", Uint64TPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(int64_t, kInt64POD, 1, "", Int64TPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(float16_t, kFloat16POD, 1, "", Float16TPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(float32_t, kFloat32POD, 1, "", Float32TPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(float64_t, kFloat64POD, 1, "", Float64TPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(std::string, kStringPOD, 1, "", StringTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(std::wstring, kWstringPOD, 1, "", WstringTPTraits);

ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V2s, kInt16POD, 2, "vector", V2sTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V2i, kInt32POD, 2, "vector", V2iTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V2f, kFloat32POD, 2, "vector", V2fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V2d, kFloat64POD, 2, "vector", V2dTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V3s, kInt16POD, 3, "vector", V3sTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V3i, kInt32POD, 3, "vector", V3iTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V3f, kFloat32POD, 3, "vector", V3fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V3d, kFloat64POD, 3, "vector", V3dTPTraits);

ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V2s, kInt16POD, 2, "point", P2sTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V2i, kInt32POD, 2, "point", P2iTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V2f, kFloat32POD, 2, "point", P2fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V2d, kFloat64POD, 2, "point", P2dTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V3s, kInt16POD, 3, "point", P3sTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V3i, kInt32POD, 3, "point", P3iTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V3f, kFloat32POD, 3, "point", P3fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V3d, kFloat64POD, 3, "point", P3dTPTraits);

ALEMBIC_ABC_DECLARE_TYPE_TRAITS(Box2s, kInt16POD, 4, "box", Box2sTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(Box2i, kInt32POD, 4, "box", Box2iTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(Box2f, kFloat32POD, 4, "box", Box2fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(Box2d, kFloat64POD, 4, "box", Box2dTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(Box3s, kInt16POD, 6, "box", Box3sTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(Box3i, kInt32POD, 6, "box", Box3iTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(Box3f, kFloat32POD, 6, "box", Box3fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(Box3d, kFloat64POD, 6, "box", Box3dTPTraits);

ALEMBIC_ABC_DECLARE_TYPE_TRAITS(M33f, kFloat32POD, 9, "matrix", M33fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(M33d, kFloat64POD, 9, "matrix", M33dTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(M44f, kFloat32POD, 16, "matrix", M44fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(M44d, kFloat64POD, 16, "matrix", M44dTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(Quatf, kFloat32POD, 4, "quat", QuatfTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(Quatd, kFloat64POD, 4, "quat", QuatdTPTraits);

ALEMBIC_ABC_DECLARE_TYPE_TRAITS(C3h, kFloat16POD, 3, "rgb", C3hTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(C3f, kFloat32POD, 3, "rgb", C3fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(C3c, kUint8POD, 3, "rgb", C3cTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(C4h, kFloat16POD, 4, "rgba", C4hTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(C4f, kFloat32POD, 4, "rgba", C4fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(C4c, kUint8POD, 4, "rgba", C4cTPTraits);

ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V2f, kFloat32POD, 2, "normal", N2fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V2d, kFloat64POD, 2, "normal", N2dTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(N3f, kFloat32POD, 3, "normal", N3fTPTraits);
ALEMBIC_ABC_DECLARE_TYPE_TRAITS(N3d, kFloat64POD, 3, "normal", N3dTPTraits);

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic

/// Expands `X(NAME, TRAITS)` for every type: the word its class names are made with, and its traits.
// clang-format off
#define ALEMBIC_ABC_FOR_EACH_TYPE(X) \
    X(Bool, BooleanTPTraits) X(Uchar, Uint8TPTraits) X(Char, Int8TPTraits) \
    X(UInt16, Uint16TPTraits) X(Int16, Int16TPTraits) X(UInt32, Uint32TPTraits) X(Int32, Int32TPTraits) \
    X(UInt64, Uint64TPTraits) X(Int64, Int64TPTraits) \
    X(Half, Float16TPTraits) X(Float, Float32TPTraits) X(Double, Float64TPTraits) \
    X(String, StringTPTraits) X(Wstring, WstringTPTraits) \
    X(V2s, V2sTPTraits) X(V2i, V2iTPTraits) X(V2f, V2fTPTraits) X(V2d, V2dTPTraits) \
    X(V3s, V3sTPTraits) X(V3i, V3iTPTraits) X(V3f, V3fTPTraits) X(V3d, V3dTPTraits) \
    X(P2s, P2sTPTraits) X(P2i, P2iTPTraits) X(P2f, P2fTPTraits) X(P2d, P2dTPTraits) \
    X(P3s, P3sTPTraits) X(P3i, P3iTPTraits) X(P3f, P3fTPTraits) X(P3d, P3dTPTraits) \
    X(Box2s, Box2sTPTraits) X(Box2i, Box2iTPTraits) X(Box2f, Box2fTPTraits) X(Box2d, Box2dTPTraits) \
    X(Box3s, Box3sTPTraits) X(Box3i, Box3iTPTraits) X(Box3f, Box3fTPTraits) X(Box3d, Box3dTPTraits) \
    X(M33f, M33fTPTraits) X(M33d, M33dTPTraits) X(M44f, M44fTPTraits) X(M44d, M44dTPTraits) \
    X(Quatf, QuatfTPTraits) X(Quatd, QuatdTPTraits) \
    X(C3h, C3hTPTraits) X(C3f, C3fTPTraits) X(C3c, C3cTPTraits) \
    X(C4h, C4hTPTraits) X(C4f, C4fTPTraits) X(C4c, C4cTPTraits) \
    X(N2f, N2fTPTraits) X(N2d, N2dTPTraits) X(N3f, N3fTPTraits) X(N3d, N3dTPTraits)
// clang-format on
