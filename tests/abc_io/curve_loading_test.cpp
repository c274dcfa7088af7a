/// load_curve: the whole record, the rules for indices, and curves that are not what they say.
#include <support/abc_archives.h>
#include <support/bytes_read.h>

#include <abc_curve_header.h>
#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <map>
#include <numeric>

using namespace abc_archives;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

namespace {

using Vec3 = GMathVec3<float>;
using Ints = std::vector<std::int32_t>;
using Indices = std::vector<std::uint32_t>;
using Floats = std::vector<float>;
using Colors = std::vector<AbcG::C4f>;
using Schema = AbcG::OCurvesSchema;

std::vector<AbcG::V3f> line(std::size_t count)
{
    std::vector<AbcG::V3f> points;
    for (std::size_t i = 0; i < count; ++i)
        points.emplace_back(float(i), 2.0f * float(i), -float(i));
    return points;
}

/// Adds curves with the given counts on a line of `point_count` points; `more(sample)` adds to the sample.
template <class More>
AbcG::OCurves add_curves(AbcG::OObject parent, const char* name, std::size_t point_count, const Ints& counts,
                         More&& more)
{
    AbcG::OCurves curves(parent, name);
    const std::vector<AbcG::V3f> points = line(point_count);
    Schema::Sample sample{AbcG::P3fArraySample(points), AbcG::Int32ArraySample(counts)};
    more(sample);
    curves.getSchema().set(sample);
    return curves;
}
AbcG::OCurves add_curves(AbcG::OObject parent, const char* name, std::size_t point_count = 4, const Ints& counts = {4})
{
    return add_curves(parent, name, point_count, counts, [](Schema::Sample&) {});
}

/// Writes one sample of a geometry parameter, with indices unless there are none.
template <class Param, class Value>
void add_param(AbcG::OCompoundProperty parent, const char* name, const std::vector<Value>& values,
               const Indices* indices = nullptr)
{
    Param param(parent, name, indices != nullptr, AbcG::kVertexScope, 1);
    typename Param::Sample sample;
    sample.setVals(values);
    if (indices) sample.setIndices(*indices);
    param.set(sample);
}

class CurveLoading : public StartedLibrary
{
protected:
    bool load(const char* object, double time = 0.0)
    {
        return AbcInput::load_curve(files_, object, time, header_, nullptr);
    }

    const ScratchFile file_{"curves.abc"};
    const AbcFileList files_{CoreString(file_.path())};
    AbcCurveHeader header_;
};

} // namespace

TEST_F(CurveLoading, EverythingThatTheCurvesHave)
{
    const std::vector<std::uint8_t> orders = {3, 4};
    const Floats widths = {0.2f, 0.4f}, knots = {0, 1};
    const Indices width_indices = {0, 0, 1, 1, 0};
    const std::vector<AbcG::V2f> uvs = {{0.25f, 0.5f}, {1, 0}};
    const std::vector<AbcG::N3f> normals = {{0, 0, 1}, {1, 2, 3}};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OCurves curves = add_curves(AbcG::OXform(top, "head"), "hair", 5, {2, 3}, [&](Schema::Sample& sample) {
            sample.setType(AbcG::kVariableOrder);
            sample.setWrap(AbcG::kPeriodic);
            sample.setBasis(AbcG::kCatmullromBasis);
            sample.setOrders(orders);
            sample.setKnots(knots);
            sample.setWidths(AbcG::OFloatGeomParam::Sample(widths, width_indices, AbcG::kVertexScope));
            sample.setUVs(AbcG::OV2fGeomParam::Sample(uvs, AbcG::kUniformScope));
            sample.setNormals(AbcG::ON3fGeomParam::Sample(normals, width_indices, AbcG::kVertexScope));
        });
        add_param<AbcG::OC4fGeomParam>(curves.getSchema(), ".color", Colors{{1, 0, 0.5f, 1}});
        AbcG::OFloatProperty(curves.getSchema().getUserProperties(), "stiffness").set(1.0f);
    });
    ASSERT_TRUE(load("/head/hair"));
    EXPECT_EQ(header_.basis_type, AbcCurveHeader::BASIS_TYPE_CATMULLROM);
    EXPECT_EQ(header_.curve_type, AbcCurveHeader::CURVE_TYPE_VARIABLE_ORDER);
    EXPECT_EQ(header_.periodicity_type, AbcCurveHeader::PERIODICITY_TYPE_PERIODIC);
    EXPECT_THAT(header_.orders, ElementsAre(3, 4));
    EXPECT_THAT(header_.vertex_counts, ElementsAre(2u, 3u));
    ASSERT_EQ(header_.positions.get_count(), 5u);
    EXPECT_EQ(header_.positions[4], Vec3(4, 8, -4));
    EXPECT_THAT(header_.radii, ElementsAre(0.1f, 0.2f)) << "a width is a diameter";
    EXPECT_THAT(header_.radius_indices, ElementsAreArray(width_indices));
    ASSERT_EQ(header_.uv_maps.get_count(), 1u);
    EXPECT_EQ(header_.uv_maps[0].name, CoreString("uv"));
    EXPECT_THAT(header_.uv_maps[0].values, ElementsAre(Vec3(0.25f, 0.5f, 0), Vec3(1, 0, 0)));
    EXPECT_THAT(header_.uv_maps[0].indices, ElementsAre());
    ASSERT_EQ(header_.color_maps.get_count(), 1u);
    EXPECT_EQ(header_.color_maps[0].name, CoreString(".color"));
    EXPECT_THAT(header_.color_maps[0].values, ElementsAre(GeometryColor{255, 0, 127, 255}));
    EXPECT_THAT(header_.color_maps[0].indices, ElementsAre(0u));
    ASSERT_EQ(header_.normal_maps.get_count(), 1u);
    EXPECT_EQ(header_.normal_maps[0].name, CoreString("N"));
    EXPECT_THAT(header_.normal_maps[0].values, ElementsAre(Vec3(0, 0, 1), Vec3(1, 2, 3)));
    EXPECT_THAT(header_.normal_maps[0].indices, ElementsAreArray(width_indices));
    EXPECT_THAT(to_strings(header_.property_names), ElementsAre("stiffness"));

    // A copy is whole; a moved record leaves nothing but its types behind.
    AbcCurveHeader copy = header_;
    const AbcCurveHeader moved = std::move(copy);
    EXPECT_EQ(moved.uv_maps, header_.uv_maps);
    EXPECT_EQ(moved.positions, header_.positions);
    EXPECT_EQ(copy.basis_type, AbcCurveHeader::BASIS_TYPE_CATMULLROM); // NOLINT: moved from, by intention
    EXPECT_EQ(copy.positions.get_count() + copy.radii.get_count() + copy.uv_maps.get_count(), 0u);
    EXPECT_EQ(copy.property_names.get_count(), 0u);
}

TEST_F(CurveLoading, RadiiComeFromWidthsThenFromTheSchemaThenFromParameters)
{
    const Floats fifth(4, 0.2f);
    const auto with_widths = [&](Schema::Sample& sample) {
        sample.setWidths(AbcG::OFloatGeomParam::Sample(fifth, AbcG::kVertexScope));
    };
    write_archive(file_.path(), [&](AbcG::OObject top) {
        using Param = AbcG::OFloatGeomParam;
        AbcG::OCurves all = add_curves(top, "all", 4, {4}, with_widths);
        add_param<Param>(all.getSchema(), ".radius", Floats(4, 7.0f));
        AbcG::OCurves own = add_curves(top, "own");
        add_param<Param>(own.getSchema(), ".radius", fifth);
        add_param<Param>(own.getSchema().getArbGeomParams(), ".radius", Floats(4, 7.0f));
        add_param<Param>(add_curves(top, "parameter").getSchema().getArbGeomParams(), ".radius", fifth);
        AbcG::OCurves misfit = add_curves(top, "misfit"); // of another type: as good as none
        add_param<AbcG::OV2fGeomParam>(misfit.getSchema(), ".radius", std::vector<AbcG::V2f>(4));
        AbcG::OCurves three = add_curves(top, "three");
        AbcG::OArrayProperty(three.getSchema(), ".radius", AbcG::DataType(Alembic::Util::kFloat32POD, 3))
            .set(AbcG::ArraySample(fifth.data(), AbcG::DataType(Alembic::Util::kFloat32POD, 3), AbcG::Dimensions(1)));
        add_curves(top, "none");
    });
    const std::vector<std::pair<const char*, Floats>> cases = {
        {"/all", Floats(4, 0.1f)}, {"/own", fifth}, {"/parameter", fifth},
        {"/misfit", {}},           {"/three", {}},  {"/none", {}}};
    for (const auto& [object, radii] : cases) {
        header_.radii = {9.0f};
        header_.radius_indices = {9u};
        ASSERT_TRUE(load(object)) << object;
        EXPECT_THAT(header_.radii, ElementsAreArray(radii)) << object;
        EXPECT_THAT(header_.radius_indices, ElementsAre()) << object;
    }
}

TEST_F(CurveLoading, OnlyScatteredIndicesAreDeliveredAndNoneBeyondTheValues)
{
    struct Case
    {
        const char* name;
        Indices stored, delivered;
        bool is_usable;
    };
    const std::vector<Case> cases = {{"run", {0, 1, 2, 3}, {}, true},
                                     {"late run", {5, 6, 7}, {}, true},
                                     {"repeated", {0, 0, 1}, {0, 0, 1}, true},
                                     {"backward", {2, 1, 0}, {2, 1, 0}, true},
                                     {"single", {3}, {}, true},
                                     {"no indices", {}, {}, true},
                                     {"beyond", {0, 4, 1, 2}, {}, false},
                                     {"huge", {0, 0xffffffffu}, {}, false}};
    const Floats values = {1, 2, 3, 4};
    const std::vector<AbcG::V2f> uvs(4, AbcG::V2f(1, 2));
    const std::vector<AbcG::N3f> normals(4, AbcG::N3f(0, 0, 1));
    write_archive(file_.path(), [&](AbcG::OObject top) {
        for (const Case& c : cases) {
            AbcG::OCurves curves = add_curves(top, c.name, 4, {4}, [&](Schema::Sample& sample) {
                sample.setWidths(AbcG::OFloatGeomParam::Sample(values, c.stored, AbcG::kVertexScope));
                sample.setUVs(AbcG::OV2fGeomParam::Sample(uvs, c.stored, AbcG::kVertexScope));
                sample.setNormals(AbcG::ON3fGeomParam::Sample(normals, c.stored, AbcG::kVertexScope));
            });
            add_param<AbcG::OC4fGeomParam>(curves.getSchema(), ".color", Colors(8), &c.stored);
        }
    });
    for (const Case& c : cases) {
        header_ = AbcCurveHeader();
        ASSERT_TRUE(load((std::string("/") + c.name).c_str())) << c.name;
        EXPECT_EQ(header_.radii.get_count(), c.is_usable ? 4u : 0u) << c.name;
        EXPECT_THAT(header_.radius_indices, ElementsAreArray(c.delivered)) << c.name;
        ASSERT_EQ(header_.uv_maps.get_count(), c.is_usable ? 1u : 0u) << c.name;
        if (c.is_usable) {
            EXPECT_THAT(header_.uv_maps[0].indices, ElementsAreArray(c.delivered)) << c.name;
        }
        // Colours keep their indices as they are, and normals are there with one index per point alone.
        const bool is_huge = c.name == std::string("huge");
        ASSERT_EQ(header_.color_maps.get_count(), is_huge ? 0u : 1u) << c.name;
        if (!is_huge) {
            EXPECT_THAT(header_.color_maps[0].indices, ElementsAreArray(c.stored)) << c.name;
        }
        EXPECT_EQ(header_.normal_maps.get_count(), c.name == std::string("run") ? 1u : 0u) << c.name;
    }
}

TEST_F(CurveLoading, ManyIndicesAreDeliveredUnlessTheyAreARunToTheEnd)
{
    constexpr std::uint32_t count = 600'000; // so many that they are read in pieces
    Indices run(count);
    std::iota(run.begin(), run.end(), 0u);
    std::map<std::string, Indices> cases{{"run", run}, {"at once", run}, {"in the middle", run}, {"at the end", run}};
    cases["at once"][0] = 5;
    cases["in the middle"][300'000] = 7;
    cases["at the end"][count - 1] = 0;
    // The first index of a piece continues no run, though those after it do.
    cases["late"] = run;
    for (std::uint32_t i = 16'384; i < count; ++i)
        cases["late"][i] = i - 16'384;
    const Floats values(count, 2.0f);
    write_archive(file_.path(), [&](AbcG::OObject top) {
        for (const auto& [name, indices] : cases)
            add_curves(top, name.c_str(), 4, {4}, [&, &stored = indices](Schema::Sample& sample) {
                sample.setWidths(AbcG::OFloatGeomParam::Sample(values, stored, AbcG::kVertexScope));
            });
    });
    for (const auto& [name, indices] : cases) {
        ASSERT_TRUE(load(("/" + name).c_str()));
        EXPECT_TRUE(Floats(header_.radii.begin(), header_.radii.end()) == Floats(count, 1.0f)) << name;
        const Indices delivered(header_.radius_indices.begin(), header_.radius_indices.end());
        EXPECT_TRUE(delivered == (name == "run" ? Indices() : indices)) << name;
    }
}

TEST_F(CurveLoading, ColoursAreTruncatedToBytesWhateverTheyAreCalled)
{
    const float nan = std::numeric_limits<float>::quiet_NaN(), infinity = std::numeric_limits<float>::infinity();
    const Colors colors = {{1.2f, -0.5f, 0.5f, 1}, {nan, infinity, -infinity, 0.999f}};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OCurves own = add_curves(top, "own"), parameter = add_curves(top, "parameter");
        AbcG::MetaData renamed;
        AbcG::SetSourceName(renamed, "hair colour");
        AbcG::OC4fGeomParam param(own.getSchema(), ".color", false, AbcG::kVertexScope, 1, renamed);
        param.set(AbcG::OC4fGeomParam::Sample(colors, AbcG::kVertexScope));
        // Four floats of no interpretation, behind a property of the same name that is no colour.
        add_param<AbcG::OV3fGeomParam>(parameter.getSchema(), ".color", line(2));
        const AbcG::DataType four(Alembic::Util::kFloat32POD, 4);
        AbcG::OArrayProperty(parameter.getSchema().getArbGeomParams(), ".color", four)
            .set(AbcG::ArraySample(colors.data(), four, AbcG::Dimensions(2)));
    });
    const std::vector<std::pair<const char*, const char*>> cases = {{"/own", "hair colour"}, {"/parameter", ".color"}};
    for (const auto& [object, name] : cases) {
        header_ = AbcCurveHeader();
        ASSERT_TRUE(load(object));
        ASSERT_EQ(header_.color_maps.get_count(), 1u) << object;
        EXPECT_EQ(header_.color_maps[0].name, CoreString(name));
        EXPECT_THAT(header_.color_maps[0].values,
                    ElementsAre(GeometryColor{255, 0, 127, 255}, GeometryColor{0, 255, 0, 254}));
        EXPECT_THAT(header_.color_maps[0].indices, ElementsAre(0u, 1u));
    }
}

TEST_F(CurveLoading, TheNearestSampleOfEachPropertyIsTaken)
{
    const auto seconds = std::make_shared<AbcG::TimeSampling>(1.0, 0.0);
    const Floats thin(4, 1.0f), thick(4, 2.0f);
    const std::vector<AbcG::V3f> first = line(4), second(4, AbcG::V3f(7, 7, 7));
    const Ints counts = {4};
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OCurves curves(top, "hair", seconds);
        Schema::Sample sample{AbcG::P3fArraySample(first), AbcG::Int32ArraySample(counts), AbcG::kLinear};
        sample.setBasis(AbcG::kNoBasis);
        sample.setWidths(AbcG::OFloatGeomParam::Sample(thin, AbcG::kVertexScope));
        curves.getSchema().set(sample);
        sample.setPositions(second);
        sample.setWidths(AbcG::OFloatGeomParam::Sample(thick, AbcG::kVertexScope));
        curves.getSchema().set(sample);
    });
    ASSERT_TRUE(load("/hair", 0.8));
    EXPECT_THAT(header_.positions, Each(Vec3(7, 7, 7)));
    EXPECT_THAT(header_.radii, Each(1.0f));
    EXPECT_THAT(header_.vertex_counts, ElementsAre(4u));
    EXPECT_EQ(header_.curve_type, AbcCurveHeader::CURVE_TYPE_LINEAR);
    EXPECT_EQ(header_.basis_type, AbcCurveHeader::BASIS_TYPE_NONE);
    header_.orders = {9};
    ASSERT_TRUE(load("/hair", 0.5)) << "of two equally near samples, the earlier";
    EXPECT_EQ(header_.positions[3], Vec3(3, 6, -3));
    EXPECT_THAT(header_.radii, Each(0.5f));
    EXPECT_THAT(header_.orders, ElementsAre(9)) << "stays as it was where none are stored";
}

TEST_F(CurveLoading, WhatIsRefusedLeavesTheRecordAsItWas)
{
    write_archive(file_.path(), [&](AbcG::OObject top) {
        AbcG::OCurves(top, "empty");
        AbcG::OXform(top, "transform");
        add_curves(top, "too long", 4, {2, 3});
        add_curves(top, "negative", 4, {6, -2});
        add_curves(top, "short", 4, {2, 1});
    });
    header_.positions = {Vec3(3, 3, 3)};
    header_.vertex_counts = {1u};
    header_.curve_type = AbcCurveHeader::CURVE_TYPE_LINEAR;
    EXPECT_TRUE(load("/empty"));
    EXPECT_FALSE(load("/transform"));
    EXPECT_FALSE(load("/absent"));
    EXPECT_FALSE(AbcInput::load_curve(CoreString("/nowhere/none.abc"), "/empty", 0.0, header_, nullptr));
    EXPECT_THAT(log_.take(), ElementsAre(HasSubstr("/nowhere/none.abc")));
    for (const char* object : {"/too long", "/negative"}) {
        EXPECT_FALSE(load(object)) << object;
        EXPECT_THAT(log_.take(), ElementsAre(testing::AllOf(HasSubstr(object), HasSubstr(file_.path()))));
    }
    EXPECT_THAT(header_.positions, ElementsAre(Vec3(3, 3, 3)));
    EXPECT_THAT(header_.vertex_counts, ElementsAre(1u));
    EXPECT_EQ(header_.curve_type, AbcCurveHeader::CURVE_TYPE_LINEAR);

    ASSERT_TRUE(load("/short")) << "points that belong to no curve do no harm";
    EXPECT_EQ(header_.positions.get_count(), 4u);
}

TEST_F(CurveLoading, NothingIsReadBesideWhatIsDelivered)
{
    constexpr std::size_t count = 100'000;
    const Floats numbers(count, 0.5f);
    Floats knots(count);
    std::iota(knots.begin(), knots.end(), 0.0f);
    const std::vector<AbcG::V3f> velocities = line(count + 1);
    write_archive(file_.path(), [&](AbcG::OObject top) {
        add_curves(top, "hair", count, Ints(1, int(count)), [&](Schema::Sample& sample) {
            sample.setVelocities(velocities);
            sample.setKnots(knots);
            sample.setWidths(AbcG::OFloatGeomParam::Sample(numbers, AbcG::kVertexScope));
        });
    });
    const std::size_t before = bytes_read();
    ASSERT_TRUE(load("/hair"));
    const std::size_t read = bytes_read() - before;
    EXPECT_GE(read, count * 16) << "the counter counts";
    EXPECT_LE(read, count * 16 + 256 * 1024) << "positions and widths, neither velocities nor knots";
}

TEST(CurveHeader, NamesOfTypes)
{
    using H = AbcCurveHeader;
    EXPECT_STREQ(H::get_basis_type_name(H::BASIS_TYPE_NONE), "BASIS_TYPE_NONE");
    EXPECT_STREQ(H::get_basis_type_name(H::BASIS_TYPE_POWER), "BASIS_TYPE_POWER");
    EXPECT_STREQ(H::get_basis_type_name(H::BasisType(6)), "BASIS_TYPE_COUNT");
    EXPECT_STREQ(H::get_basis_type_name(H::BasisType(7)), "BASIS_TYPE_UNKNOWN");
    EXPECT_STREQ(H::get_curve_type_name(H::CurveType(3)), "CURVE_TYPE_COUNT");
    EXPECT_STREQ(H::get_curve_type_name(H::CurveType(-1)), "CURVE_TYPE_UNKNOWN");
    EXPECT_STREQ(H::get_periodicity_type_name(H::PeriodicityType(2)), "PERIODICITY_TYPE_COUNT");
    EXPECT_STREQ(H::get_periodicity_type_name(H::PeriodicityType(3)), "PERIODICITY_TYPE_UNKNOWN");
}
