/// Bounds of positions agree with Imath's own boxes, to the bit, whatever numbers there are.
#include <Alembic/AbcGeom/All.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <random>
#include <vector>

using namespace Alembic::AbcGeom;

TEST(PositionBounds, AreThoseThatImathGivesToTheBit)
{
    const float infinity = std::numeric_limits<float>::infinity();
    const float special[] = {0.0f,
                             -0.0f,
                             infinity,
                             -infinity,
                             std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::max(),
                             std::numeric_limits<float>::denorm_min()};
    for (unsigned seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> ordinary(-100.0f, 100.0f);
        const unsigned specials_of_ten = seed % 11;
        const auto number = [&] { return random() % 10 < specials_of_ten ? special[random() % 7] : ordinary(random); };
        std::vector<V3f> positions(seed % 40);
        Box3d expected;
        for (V3f& position : positions) {
            position = V3f(number(), number(), number());
            expected.extendBy(V3d(position));
        }
        const Box3d bounds = ComputeBoundsFromPositions(P3fArraySample(positions));
        EXPECT_EQ(std::memcmp(&bounds, &expected, sizeof bounds), 0) << "seed " << seed;
    }
}
