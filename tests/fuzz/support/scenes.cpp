/// The scenes.
#include "scenes.h"

#include "container_tree.h"

#include <Alembic/AbcCollection/All.h>
#include <Alembic/AbcCoreOgawa/All.h>
#include <Alembic/AbcGeom/All.h>
#include <Alembic/AbcMaterial/All.h>

#include <sstream>
#include <vector>

namespace vo_fuzz {

namespace {

using namespace Alembic::AbcGeom;

/// The bytes of an archive that `write(top, sampling of 24 a second, acyclic sampling)` fills.
template <class Write>
std::string archive_bytes(const Write& write)
{
    std::ostringstream stream;
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive()(&stream, MetaData()));
        const std::vector<chrono_t> times = {-1.0, 0.25, 2.0};
        OObject top = archive.getTop();
        write(top, std::make_shared<TimeSampling>(1.0 / 24.0, 0.0),
              std::make_shared<TimeSampling>(TimeSamplingType(TimeSamplingType::kAcyclic), times));
    }
    // The archive's own metadata tells when the library was built.
    ContainerTree tree(stream.str());
    tree.child(tree.root, 3).bytes = "_ai_Application=scene;_ai_DCC_FPS=24.000000";
    return tree.file();
}

std::vector<V3f> points(float size)
{
    return {{0, 0, 0}, {size, 0, 0}, {size, size, 0}, {0, size, 0}, {0, 0, size}};
}

const std::vector<std::int32_t> face_counts = {4, 3}, face_indices = {0, 1, 2, 3, 0, 1, 4};
const std::vector<V2f> uvs = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
const std::vector<std::uint32_t> corner_uvs = {0, 1, 2, 3, 0, 1, 3};
const std::vector<std::int32_t> two_faces = {0, 1};

void add_mesh(OObject parent, const std::string& name, const TimeSamplingPtr& sampling)
{
    OPolyMesh mesh(parent, name, sampling);
    for (const float size : {1.0f, 2.0f, 3.0f}) {
        const std::vector<V3f> corners = points(size);
        OPolyMeshSchema::Sample sample(P3fArraySample(corners), face_indices, face_counts);
        if (size == 1.0f) sample.setUVs({V2fArraySample(uvs), UInt32ArraySample(corner_uvs), kFacevaryingScope});
        mesh.getSchema().set(sample);
    }
    mesh.getSchema().createFaceSet("half").getSchema().set(OFaceSetSchema::Sample({two_faces.data(), 1}));
    const OCompoundProperty user = mesh.getSchema().getUserProperties();
    OInt32Property(user, "number").set(7);
    OStringProperty(user, "word").set("text");
}

void add_curves(OObject parent, const std::string& name, bool with_all)
{
    OCurves curves(parent, name);
    const std::vector<V3f> positions = points(1);
    const std::vector<std::int32_t> counts = {2, 3};
    OCurvesSchema::Sample sample(P3fArraySample(positions), counts, kLinear, kNonPeriodic);
    const std::vector<float> widths = {1, 2, 3, 4, 5};
    sample.setWidths({FloatArraySample(widths), kVertexScope});
    const std::vector<std::uint8_t> orders = {2, 3};
    if (with_all) {
        sample.setOrders(UcharArraySample(orders.data(), 2));
        sample.setKnots(FloatArraySample(widths));
        sample.setPositionWeights(FloatArraySample(widths));
        sample.setVelocities(V3fArraySample(positions));
        sample.setUVs({V2fArraySample(uvs), UInt32ArraySample(corner_uvs.data(), 5), kVertexScope});
        sample.setNormals({N3fArraySample(positions), kVertexScope});
    }
    curves.getSchema().set(sample);
}

void add_points(OObject parent, const std::string& name, const TimeSamplingPtr& sampling)
{
    OPoints object(parent, name, sampling);
    const std::vector<std::uint64_t> ids = {1, 2, 3, 4, 5};
    for (const float size : {1.0f, 2.0f}) {
        const std::vector<V3f> positions = points(size);
        object.getSchema().set({P3fArraySample(positions), UInt64ArraySample(ids), V3fArraySample(positions)});
    }
}

void add_transform_values(OXform& transform)
{
    for (const double x : {1.0, 4.0}) {
        XformSample sample;
        sample.addOp(XformOp(kTranslateOperation, kTranslateHint), V3d(x, 2, 3));
        sample.addOp(XformOp(kRotateYOperation, kRotateHint), 30.0 * x);
        sample.addOp(XformOp(kScaleOperation, kScaleHint), V3d(1, 2, x));
        transform.getSchema().set(sample);
    }
}

void add_subdivision(OObject parent)
{
    OSubD subd(parent, "subd");
    const std::vector<V3f> positions = points(1);
    OSubDSchema::Sample sample{P3fArraySample(positions), Int32ArraySample(face_indices),
                               Int32ArraySample(face_counts)};
    const std::vector<std::int32_t> lengths = {2}, crease = {0, 1}, corner = {2};
    const std::vector<float> sharpness = {1.5f};
    sample.setCreases(Int32ArraySample(crease), Int32ArraySample(lengths), FloatArraySample(sharpness));
    sample.setCorners(Int32ArraySample(corner), FloatArraySample(sharpness));
    sample.setHoles(Int32ArraySample(two_faces.data(), 1));
    sample.setSubdivisionScheme("loop");
    sample.setInterpolateBoundary(1);
    sample.setUVs({V2fArraySample(uvs), UInt32ArraySample(corner_uvs), kFacevaryingScope});
    subd.getSchema().set(sample);
    subd.getSchema().createFaceSet("part").getSchema().set(OFaceSetSchema::Sample(Int32ArraySample(two_faces)));
}

void add_patch(OObject parent)
{
    ONuPatch patch(parent, "patch");
    const std::vector<V3f> positions(4, V3f(1, 2, 3));
    const std::vector<float> knots = {0, 0, 1, 1};
    ONuPatchSchema::Sample sample(P3fArraySample(positions), 2, 2, 2, 2, FloatArraySample(knots),
                                  FloatArraySample(knots));
    sample.setTrimCurve(1, Int32ArraySample(two_faces), Int32ArraySample(two_faces), Int32ArraySample(two_faces),
                        FloatArraySample(knots), FloatArraySample(knots), FloatArraySample(knots),
                        FloatArraySample(knots), FloatArraySample(knots), FloatArraySample(knots));
    patch.getSchema().set(sample);
}

CameraSample camera_sample(double focal_length)
{
    CameraSample sample;
    sample.setFocalLength(focal_length);
    sample.addOp(FilmBackXformOp(kScaleFilmBackOperation, "filmFitHorz"));
    sample.addOp(FilmBackXformOp(kTranslateFilmBackOperation, "offset"));
    return sample;
}

void add_cameras(OObject parent, const TimeSamplingPtr& sampling)
{
    OCamera camera(parent, "camera", sampling);
    camera.getSchema().set(camera_sample(35));
    camera.getSchema().set(camera_sample(50));
    OLight(parent, "light").getSchema().setCameraSample(camera_sample(20));
}

template <class Array, class Value>
void add_array(const OCompoundProperty& parent, const std::string& name, std::vector<Value> values)
{
    Array property(parent, name);
    property.set(typename Array::sample_type(values));
    values.pop_back();
    property.set(typename Array::sample_type(values));
}

void add_user_properties(OXform& transform)
{
    const OCompoundProperty user = transform.getSchema().getUserProperties();
    OWstringProperty(user, "wide").set(L"wide");
    OBoolProperty(user, "yes").set(true);
    OHalfProperty(user, "half").set(0.5f);
    OM44dProperty(user, "matrix").set(M44d());
    OBox3dProperty(user, "box").set(Box3d(V3d(0), V3d(1)));
    add_array<OStringArrayProperty>(user, "words", std::vector<std::string>{"one", "", "three"});
    add_array<OWstringArrayProperty>(user, "wides", std::vector<std::wstring>{L"one", L"", L"three"});
    add_array<ODoubleArrayProperty>(user, "doubles", std::vector<double>{1, 2, 3});
    add_array<OInt64ArrayProperty>(user, "longs", std::vector<std::int64_t>{1, -2, 3});
    OCompoundProperty inner(OCompoundProperty(user, "inner"), "innermost");
    OUcharProperty(inner, "byte").set(255);
    const OCompoundProperty parameters = transform.getSchema().getArbGeomParams();
    const std::vector<C3f> colors = {{1, 0, 0}, {0, 1, 0}};
    const std::vector<std::uint32_t> indices = {0, 1, 1, 0};
    OC3fGeomParam(parameters, "colour", true, kVertexScope, 1)
        .set({C3fArraySample(colors), UInt32ArraySample(indices), kVertexScope});
    OV2fGeomParam(parameters, "map", false, kFacevaryingScope, 1).set({V2fArraySample(uvs), kFacevaryingScope});
}

void add_materials(OObject parent)
{
    Alembic::AbcMaterial::OMaterial material(parent, "material");
    auto& schema = material.getSchema();
    schema.setShader("renderer", "surface", "plastic");
    OFloatProperty(schema.getShaderParameters("renderer", "surface"), "gloss").set(0.5f);
    schema.addNetworkNode("node", "renderer", "noise");
    schema.addNetworkNode("other", "renderer", "mix");
    schema.setNetworkNodeConnection("other", "in", "node", "out");
    schema.setNetworkTerminal("renderer", "surface", "other", "out");
    schema.setNetworkInterfaceParameterMapping("size", "node", "scale");
    Alembic::AbcCollection::OCollections collections(parent, "collections");
    OStringArrayProperty collection = collections.getSchema().createCollection("all");
    collection.set(std::vector<std::string>{"/root/mesh", "/root/curves"});
}

} // namespace

std::string small_scene()
{
    return archive_bytes([](OObject top, const TimeSamplingPtr& sampling, const TimeSamplingPtr&) {
        OXform root(top, "root", sampling);
        add_transform_values(root);
        add_mesh(root, "mesh", sampling);
        add_curves(root, "curves", false);
        add_points(root, "points", sampling);
    });
}

std::string full_scene()
{
    return archive_bytes([](OObject top, const TimeSamplingPtr& uniform, const TimeSamplingPtr& acyclic) {
        OXform root(top, "root", uniform);
        add_transform_values(root);
        add_user_properties(root);
        CreateVisibilityProperty(root, uniform).set(kVisibilityVisible);
        add_mesh(root, "mesh", acyclic);
        add_curves(root, "curves", true);
        add_points(root, "points", uniform);
        add_subdivision(root);
        add_patch(root);
        add_cameras(root, uniform);
        add_materials(root);
        root.addChildInstance(OObject(root, "group"), "copy");
        OBox3dProperty(top.getProperties(), ".childBnds").set(Box3d(V3d(0), V3d(1)));
    });
}

std::string scene_of_nested_instances(std::size_t name_size)
{
    return archive_bytes([&](OObject top, const TimeSamplingPtr&, const TimeSamplingPtr&) {
        std::vector<OObject> levels;
        for (int i = 0; i < 25; ++i)
            levels.push_back(OXform(top, "l" + std::to_string(i)));
        for (std::size_t i = 0; i + 1 < levels.size(); ++i)
            for (const char* name : {"a", "b"})
                levels[i].addChildInstance(levels[i + 1], name + std::string(name_size - 1, '_'));
    });
}

std::string layer_of_scene(int layer)
{
    if (layer == 0) return small_scene();
    return archive_bytes([layer](OObject top, const TimeSamplingPtr& sampling, const TimeSamplingPtr&) {
        OXform root(top, "root", sampling);
        add_mesh(root, layer == 1 ? "mesh" : "other", sampling);
        MetaData prune;
        prune.set(layer == 1 ? "replace" : "prune", "1");
        OObject(root, "curves", prune);
        OInt32Property(OCompoundProperty(root.getProperties(), ".xform2"), "number", prune).set(layer);
    });
}

} // namespace vo_fuzz
