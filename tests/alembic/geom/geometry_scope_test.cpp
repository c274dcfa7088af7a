/// How many values a parameter of each scope needs.
#include <Alembic/AbcGeom/GeometryScope.h>

#include <gtest/gtest.h>

#include <vector>

using namespace Alembic::AbcGeom;

namespace {

template <class COUNT>
std::vector<size_t> by_scope(const COUNT& count)
{
    std::vector<size_t> counts;
    for (const auto scope : {kConstantScope, kUniformScope, kVaryingScope, kVertexScope, kFacevaryingScope}) {
        counts.push_back(count(scope));
    }
    EXPECT_EQ(count(kUnknownScope), 0u);
    return counts;
}

typedef std::vector<size_t> Counts;

} // namespace

TEST(GeometryScope, ValuesOfMeshesAndPoints)
{
    // A cube: 6 faces, 8 points, 24 corners.
    const Counts cube = {1, 6, 8, 8, 24};
    EXPECT_EQ(by_scope([](GeometryScope s) { return GeometryScopeNumValuesPointsPolygons(s, 6, 8, 24); }), cube);
    EXPECT_EQ(by_scope([](GeometryScope s) { return GeometryScopeNumValuesSubdivisionMesh(s, 6, 8, 24); }), cube);
    EXPECT_EQ(by_scope([](GeometryScope s) { return GeometryScopeNumValuesPoints(s, 5); }), Counts({1, 1, 5, 5, 5}));
    EXPECT_EQ(by_scope([](GeometryScope s) { return GeometryScopeNumValuesPolygon(s, 3); }), Counts({1, 1, 3, 3, 3}));
}

TEST(GeometryScope, ValuesOfPatchesAndCurves)
{
    // 7 x 4 points: two Bezier patches side by side, six corners.
    EXPECT_EQ(by_scope([](GeometryScope s) { return GeometryScopeNumValuesBicubicPatchMesh(s, 7, true, 4, true); }),
              Counts({1, 2, 6, 28, 6}));
    // The same closed in u: 6 points around.
    EXPECT_EQ(by_scope([](GeometryScope s) { return GeometryScopeNumValuesBicubicPatchMesh(s, 6, false, 4, true); }),
              Counts({1, 2, 4, 24, 4}));
    EXPECT_EQ(by_scope([](GeometryScope s) { return GeometryScopeNumValuesBilinearPatchMesh(s, 3, true, 3, false); }),
              Counts({1, 6, 9, 9, 9}));
    EXPECT_EQ(by_scope([](GeometryScope s) { return GeometryScopeNumValuesNuPatch(s, 4, 4, 5, 4); }),
              Counts({1, 2, 6, 20, 6}));
    EXPECT_EQ(by_scope([](GeometryScope s) { return GeometryScopeNumValuesLinearCurves(s, 2, true, 9); }),
              Counts({1, 2, 9, 9, 9}));
    // Curves of 4 and 7 points: 1 and 2 segments, 2 and 3 ends.
    EXPECT_EQ(by_scope([](GeometryScope s) { return GeometryScopeNumValuesCubicCurves(s, 2, true, 11); }),
              Counts({1, 2, 5, 11, 5}));
    // Nothing runs below zero.
    EXPECT_EQ(GeometryScopeNumValuesNuPatch(kUniformScope, 1, 9, 1, 9), 0u);
    EXPECT_EQ(GeometryScopeNumValuesBicubicPatchMesh(kUniformScope, 0, true, 0, true), 0u);
}
