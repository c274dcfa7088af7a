/// Schemas with a property that is missing or of another type: an error that says so, never anything worse.
#include "schema_parts.h"

#include <gtest/gtest.h>

using namespace schema_parts;

namespace {

const std::vector<float> some_floats = {0, 0, 1, 1};
const std::vector<int32_t> some_integers = {0, 1, 2};

Part bounds()
{
    return scalar<OBox3dProperty>(".selfBnds", Box3d(V3d(0.0), V3d(1.0)), true);
}
Part positions()
{
    return array<OP3fArrayProperty>("P", std::vector<V3f>(3, V3f(1.0f)), true);
}
Part velocities()
{
    return array<OV3fArrayProperty>(".velocities", std::vector<V3f>(3, V3f(1.0f)), false);
}
Part integers(const char* name, bool required)
{
    return array<OInt32ArrayProperty>(name, some_integers, required);
}
Part floats(const char* name, bool required)
{
    return array<OFloatArrayProperty>(name, some_floats, required);
}
Part integer(const char* name, bool required)
{
    return scalar<OInt32Property>(name, int32_t(2), required);
}

Parts mesh_parts()
{
    return {bounds(), positions(), integers(".faceIndices", true), integers(".faceCounts", true), velocities()};
}

Parts subdivision_parts()
{
    Parts parts = mesh_parts();
    for (const char* name : {".creaseIndices", ".creaseLengths", ".cornerIndices", ".holes"}) {
        parts.push_back(integers(name, false));
    }
    for (const char* name : {".creaseSharpnesses", ".cornerSharpnesses"}) {
        parts.push_back(floats(name, false));
    }
    for (const char* name :
         {".faceVaryingInterpolateBoundary", ".faceVaryingPropagateCorners", ".interpolateBoundary"}) {
        parts.push_back(integer(name, false));
    }
    parts.push_back(scalar<OStringProperty>(".scheme", std::string("loop"), false));
    return parts;
}

Parts curve_parts()
{
    return {bounds(),
            positions(),
            integers("nVertices", true),
            tuple<uint8_t>("curveBasisAndType", kUint8POD, {200, 201, 202, 203}, true),
            velocities(),
            floats("w", false),
            array<OUcharArrayProperty>(".orders", std::vector<uint8_t>{4}, false),
            floats(".knots", false)};
}

Parts point_parts()
{
    return {bounds(), positions(), array<OUInt64ArrayProperty>(".pointIds", std::vector<uint64_t>{1, 2, 3}, true),
            velocities()};
}

Parts patch_parts()
{
    return {bounds(),
            positions(),
            integer("nu", true),
            integer("nv", true),
            integer("uOrder", true),
            integer("vOrder", true),
            floats("uKnot", true),
            floats("vKnot", true),
            velocities(),
            floats("w", false)};
}

Parts face_set_parts()
{
    return {bounds(), integers(".faces", true),
            scalar<OUInt32Property>(".facesExclusive", uint32_t(4000000000u), false)};
}

Parts camera_parts()
{
    return {tuple<double>(".core", kFloat64POD, std::vector<double>(16, 1.0), true),
            tuple<std::string>(".filmBackOps", kStringPOD, {"mhint", "", "zebra", "s"}, false),
            tuple<double>(".filmBackChannels", kFloat64POD, {1, 2, 3}, false)};
}

Parts transform_parts()
{
    return {scalar<OBoolProperty>(".inherits", bool_t(true), false),
            tuple<uint8_t>(".ops", kUint8POD, {0x10, 0xf0, 0x31}, false),
            tuple<double>(".vals", kFloat64POD, {1, 2, 3, 4}, false)};
}

/// Every wrong thing a property can be.
Parts impostors()
{
    const auto text = tuple<std::string>("", kStringPOD, {"not", "this"}, false);
    const auto texts = array<OStringArrayProperty>("", std::vector<std::string>{"nor", "this"}, false);
    const auto compound =
        Part{"", false, [](OCompoundProperty into, const std::string& n) { OCompoundProperty(into, n); }};
    const auto odd = tuple<int16_t>("", kInt16POD, std::vector<int16_t>(5, 1), false);
    const auto odd_array = array<OInt16ArrayProperty>("", std::vector<int16_t>(5, 1), false);
    return {text, texts, compound, odd, odd_array};
}

template <class SCHEMA>
void use(SCHEMA& schema)
{
    schema.getNumSamples();
    schema.isConstant();
    schema.getTimeSampling();
    schema.getValue();
    schema.getValue(ISampleSelector(index_t(1000)));
    schema.getValue(ISampleSelector(1e30, ISampleSelector::kCeilIndex));
    schema.getArbGeomParams();
    schema.getUserProperties();
    schema.getChildBoundsProperty();
    SCHEMA copy(schema);
    copy.reset();
    EXPECT_FALSE(copy.valid());
}

template <class OBJECT>
void expect_refused(const IObject& top, const std::string& name)
{
    EXPECT_THROW(OBJECT(top, name), Alembic::Util::Exception) << name;
    OBJECT quiet(top, name, ErrorHandler::kQuietNoopPolicy);
    EXPECT_FALSE(quiet.valid()) << name;
    EXPECT_FALSE(quiet.getSchema().valid()) << name;
    EXPECT_NE(quiet.getErrorHandler().getErrorLog(), "") << name;
    EXPECT_NO_THROW(use(quiet.getSchema())) << name;
}

template <class OBJECT>
void expect_accepted(const IObject& top, const std::string& name)
{
    EXPECT_NO_THROW({
        OBJECT object(top, name);
        EXPECT_TRUE(object.valid()) << name;
        use(object.getSchema());
    }) << name;
}

/// Leaves each part out in turn, and puts each impostor into its place.
template <class OBJECT>
void check(const Parts& parts)
{
    typedef typename OBJECT::info_type Info;
    const Parts wrong = impostors();
    ScratchFile file("wrong_types.abc");
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        write_object<Info>(archive.getTop(), "whole", parts);
        for (const Part& part : parts) {
            OCompoundProperty without = make_schema<Info>(archive.getTop(), "without " + part.name);
            for (const Part& other : parts) {
                if (other.name != part.name) other.write(without, other.name);
            }
            for (size_t i = 0; i < wrong.size(); ++i) {
                OCompoundProperty with =
                    make_schema<Info>(archive.getTop(), part.name + " is wrong " + std::to_string(i));
                for (const Part& other : parts) {
                    (other.name == part.name ? wrong[i] : other).write(with, other.name);
                }
            }
        }
    }
    IArchive archive = open_archive(file);
    const IObject top = archive.getTop();
    expect_accepted<OBJECT>(top, "whole");
    for (const Part& part : parts) {
        if (part.required) {
            expect_refused<OBJECT>(top, "without " + part.name);
        } else {
            expect_accepted<OBJECT>(top, "without " + part.name);
        }
        for (size_t i = 0; i < wrong.size(); ++i) {
            // Film back operations are texts, in either form.
            const bool fits = part.name == ".filmBackOps" && i < 2;
            const std::string name = part.name + " is wrong " + std::to_string(i);
            fits ? expect_accepted<OBJECT>(top, name) : expect_refused<OBJECT>(top, name);
        }
    }
}

} // namespace

TEST(WrongTypes, PolygonMesh)
{
    check<IPolyMesh>(mesh_parts());
}
TEST(WrongTypes, SubdivisionSurface)
{
    check<ISubD>(subdivision_parts());
}
TEST(WrongTypes, Curves)
{
    check<ICurves>(curve_parts());
}
TEST(WrongTypes, Points)
{
    check<IPoints>(point_parts());
}
TEST(WrongTypes, Patch)
{
    check<INuPatch>(patch_parts());
}
TEST(WrongTypes, FaceSet)
{
    check<IFaceSet>(face_set_parts());
}
TEST(WrongTypes, Camera)
{
    check<ICamera>(camera_parts());
}
TEST(WrongTypes, Transform)
{
    check<IXform>(transform_parts());
}

TEST(WrongTypes, OptionalParametersOfAnotherKindAreAbsent)
{
    ScratchFile file("parameters.abc");
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        Parts parts = mesh_parts();
        parts.push_back(integers("uv", false));
        parts.push_back(scalar<OFloatProperty>("N", 1.0f, false));
        parts.push_back(integer(".arbGeomParams", false));
        parts.push_back(integer(".childBnds", false));
        write_object<PolyMeshSchemaInfo>(archive.getTop(), "mesh", parts);
    }
    IArchive archive = open_archive(file);
    const IPolyMesh mesh(archive.getTop(), "mesh");
    EXPECT_TRUE(mesh.valid());
    EXPECT_FALSE(mesh.getSchema().getUVsParam().valid());
    EXPECT_FALSE(mesh.getSchema().getNormalsParam().valid());
    EXPECT_THROW(mesh.getSchema().getArbGeomParams(), Alembic::Util::Exception);
    EXPECT_THROW(mesh.getSchema().getChildBoundsProperty(), Alembic::Util::Exception);

    const IPolyMesh quiet(archive.getTop(), "mesh", ErrorHandler::kQuietNoopPolicy);
    EXPECT_FALSE(quiet.getSchema().getArbGeomParams().valid());
    EXPECT_NE(quiet.getSchema().getErrorHandler().getErrorLog(), "");
    EXPECT_FALSE(quiet.getSchema().valid()) << "a logged error makes a handle invalid";
    quiet.getSchema().getErrorHandler().clear();
    EXPECT_TRUE(quiet.getSchema().valid());
    EXPECT_TRUE(quiet.getSchema().getValue().valid());
}

TEST(WrongTypes, InvalidHandlesAnswerQuietly)
{
    const auto empty = [](auto schema) {
        EXPECT_FALSE(schema.valid());
        EXPECT_EQ(schema.getNumSamples(), 0u);
        EXPECT_TRUE(schema.isConstant());
        EXPECT_NO_THROW(use(schema));
    };
    empty(IXformSchema());
    empty(IPolyMeshSchema());
    empty(ISubDSchema());
    empty(ICurvesSchema());
    empty(IPointsSchema());
    empty(INuPatchSchema());
    empty(IFaceSetSchema());
    empty(ICameraSchema());
    empty(IGeomBase());
    EXPECT_FALSE(ILightSchema().getCameraSchema().valid());
    EXPECT_EQ(ILightSchema().getNumSamples(), 0u);

    EXPECT_TRUE(IXformSchema().getTimeSampling() != nullptr);
    EXPECT_TRUE(IXformSchema().getInheritsXforms());
    EXPECT_TRUE(IXformSchema().isConstantIdentity());
    EXPECT_EQ(IPolyMeshSchema().getTopologyVariance(), kConstantTopology);
    EXPECT_FALSE(IPolyMeshSchema().hasFaceSet("any"));
    std::vector<std::string> names;
    ISubDSchema().getFaceSetNames(names);
    EXPECT_TRUE(names.empty());

    const IV2fGeomParam param;
    EXPECT_EQ(param.getNumSamples(), 0u);
    EXPECT_TRUE(param.isConstant());
    EXPECT_EQ(param.getName(), "");
    EXPECT_EQ(param.getTimeSampling(), nullptr);
    EXPECT_FALSE(param.getExpandedValue().valid());
    EXPECT_FALSE(param.getIndexedValue().valid());
    EXPECT_FALSE(param.getParent().valid());

    IArchive archive;
    EXPECT_FALSE(GetIArchiveBounds(archive).valid());
    IObject object;
    EXPECT_FALSE(GetVisibilityProperty(object).valid());
    EXPECT_EQ(GetVisibility(object), kVisibilityDeferred);
    EXPECT_THROW(IsAncestorInvisible(object), Alembic::Util::Exception);
}
