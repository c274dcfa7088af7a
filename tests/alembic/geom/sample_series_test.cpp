/// Every writing schema against a model, over random series of samples: late parts, repeated ones, partial samples,
/// sparse schemas.
#include "sample_series.h"

using namespace sample_series;

namespace {

#define GIVE(SAMPLE, SETTER, ARRAY, TYPE)                                                                              \
    [](SAMPLE& sample, const Numbers& numbers, Storage& storage) { sample.SETTER(ARRAY(storage.keep<TYPE>(numbers))); }
#define GIVE_PARAM(SAMPLE, SETTER, PARAM, ARRAY, TYPE)                                                                 \
    [](SAMPLE& sample, const Numbers& numbers, Storage& storage) {                                                     \
        sample.SETTER(PARAM::Sample(ARRAY(storage.keep<TYPE>(numbers)), kVertexScope));                                \
    }

template <class SAMPLE>
SeriesParts<SAMPLE> mesh_parts()
{
    typedef SeriesPart<SAMPLE> Part;
    return {
        {"P", 3, Part::REQUIRED, GIVE(SAMPLE, setPositions, P3fArraySample, V3f)},
        {".faceIndices", 1, Part::REQUIRED, GIVE(SAMPLE, setFaceIndices, Int32ArraySample, int32_t)},
        {".faceCounts", 1, Part::REQUIRED, GIVE(SAMPLE, setFaceCounts, Int32ArraySample, int32_t)},
        {".velocities", 3, Part::OPTIONAL, GIVE(SAMPLE, setVelocities, V3fArraySample, V3f)},
        {"uv", 2, Part::OPTIONAL, GIVE_PARAM(SAMPLE, setUVs, OV2fGeomParam, V2fArraySample, V2f)},
    };
}

template <class OBJECT, class SAMPLE>
void check_many(const SeriesParts<SAMPLE>& parts, bool is_mesh)
{
    for (unsigned seed = 1; seed <= 60 && !::testing::Test::HasFailure(); ++seed) {
        check_random_series<OBJECT, SAMPLE>(seed, parts, is_mesh, false);
        check_random_series<OBJECT, SAMPLE>(seed, parts, is_mesh, true);
    }
}

} // namespace

TEST(SampleSeries, PolygonMeshes)
{
    typedef OPolyMeshSchema::Sample Sample;
    SeriesParts<Sample> parts = mesh_parts<Sample>();
    parts.push_back(
        {"N", 3, SeriesPart<Sample>::OPTIONAL, GIVE_PARAM(Sample, setNormals, ON3fGeomParam, N3fArraySample, V3f)});
    check_many<OPolyMesh>(parts, true);
}

TEST(SampleSeries, SubdivisionSurfaces)
{
    typedef OSubDSchema::Sample Sample;
    typedef SeriesPart<Sample> Part;
    SeriesParts<Sample> parts = mesh_parts<Sample>();
    parts.push_back(
        {".creaseIndices", 1, Part::LATE_ONE_SHORT, GIVE(Sample, setCreaseIndices, Int32ArraySample, int32_t)});
    parts.push_back(
        {".creaseLengths", 1, Part::LATE_ONE_SHORT, GIVE(Sample, setCreaseLengths, Int32ArraySample, int32_t)});
    parts.push_back(
        {".creaseSharpnesses", 1, Part::LATE_ONE_SHORT, GIVE(Sample, setCreaseSharpnesses, FloatArraySample, float)});
    parts.push_back(
        {".cornerIndices", 1, Part::LATE_ONE_SHORT, GIVE(Sample, setCornerIndices, Int32ArraySample, int32_t)});
    parts.push_back(
        {".cornerSharpnesses", 1, Part::LATE_ONE_SHORT, GIVE(Sample, setCornerSharpnesses, FloatArraySample, float)});
    parts.push_back({".holes", 1, Part::LATE_ONE_SHORT, GIVE(Sample, setHoles, Int32ArraySample, int32_t)});
    check_many<OSubD>(parts, true);
}

TEST(SampleSeries, Curves)
{
    typedef OCurvesSchema::Sample Sample;
    typedef SeriesPart<Sample> Part;
    const SeriesParts<Sample> parts = {
        {"P", 3, Part::REQUIRED, GIVE(Sample, setPositions, P3fArraySample, V3f)},
        {"nVertices", 1, Part::STARTS_EMPTY, GIVE(Sample, setCurvesNumVertices, Int32ArraySample, int32_t)},
        {".velocities", 3, Part::OPTIONAL, GIVE(Sample, setVelocities, V3fArraySample, V3f)},
        {"uv", 2, Part::OPTIONAL, GIVE_PARAM(Sample, setUVs, OV2fGeomParam, V2fArraySample, V2f)},
        {"N", 3, Part::OPTIONAL, GIVE_PARAM(Sample, setNormals, ON3fGeomParam, N3fArraySample, V3f)},
        {"width", 1, Part::OPTIONAL, GIVE_PARAM(Sample, setWidths, OFloatGeomParam, FloatArraySample, float)},
        {"w", 1, Part::OPTIONAL, GIVE(Sample, setPositionWeights, FloatArraySample, float)},
        {".orders", 1, Part::OPTIONAL, GIVE(Sample, setOrders, UcharArraySample, uint8_t)},
        {".knots", 1, Part::OPTIONAL, GIVE(Sample, setKnots, FloatArraySample, float)},
    };
    check_many<OCurves>(parts, false);
}

TEST(SampleSeries, Points)
{
    typedef OPointsSchema::Sample Sample;
    typedef SeriesPart<Sample> Part;
    const SeriesParts<Sample> parts = {
        {"P", 3, Part::REQUIRED, GIVE(Sample, setPositions, P3fArraySample, V3f)},
        {".pointIds", 1, Part::STARTS_EMPTY, GIVE(Sample, setIds, UInt64ArraySample, uint64_t)},
        {".velocities", 3, Part::OPTIONAL, GIVE(Sample, setVelocities, V3fArraySample, V3f)},
        {".widths", 1, Part::OPTIONAL, GIVE_PARAM(Sample, setWidths, OFloatGeomParam, FloatArraySample, float)},
    };
    check_many<OPoints>(parts, false);
}

TEST(SampleSeries, PatchesWithTrimCurves)
{
    // The first sample of a patch needs its numbers too: they are given with the knots.
    struct Sample : ONuPatchSchema::Sample
    {
        void give_u_knot(const FloatArraySample& knot)
        {
            setUKnot(knot);
            setNu(2);
            setNv(3);
            setUOrder(4);
            setVOrder(5);
        }
        void give_trim_knot(const FloatArraySample& knot)
        {
            const Int32ArraySample none;
            const FloatArraySample nothing;
            setTrimCurve(7, none, none, none, knot, nothing, nothing, nothing, nothing, nothing);
        }
    };
    typedef SeriesPart<Sample> Part;
    const SeriesParts<Sample> parts = {
        {"P", 3, Part::REQUIRED, GIVE(Sample, setPositions, P3fArraySample, V3f)},
        {"uKnot", 1, Part::REQUIRED, GIVE(Sample, give_u_knot, FloatArraySample, float)},
        {"vKnot", 1, Part::REQUIRED, GIVE(Sample, setVKnot, FloatArraySample, float)},
        {".velocities", 3, Part::OPTIONAL, GIVE(Sample, setVelocities, V3fArraySample, V3f)},
        {"uv", 2, Part::OPTIONAL, GIVE_PARAM(Sample, setUVs, OV2fGeomParam, V2fArraySample, V2f)},
        {"N", 3, Part::OPTIONAL, GIVE_PARAM(Sample, setNormals, ON3fGeomParam, N3fArraySample, V3f)},
        {"w", 1, Part::OPTIONAL, GIVE(Sample, setPositionWeights, FloatArraySample, float)},
        {"trim_knot", 1, Part::OPTIONAL, GIVE(Sample, give_trim_knot, FloatArraySample, float)},
    };
    check_many<ONuPatch>(parts, false);
}
