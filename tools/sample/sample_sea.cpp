/// The sea, its foam and its spray.
#include "grid_mesh.h"
#include "sample_parts.h"

#include <algorithm>
#include <cmath>

using namespace Alembic::AbcGeom;

namespace sample {

namespace {

constexpr float sea_size = 12.0f;
constexpr float foam_lift = 0.02f; // above the water

/// A wave with pointed crests; it runs on by a whole number of its lengths in a second.
struct Wave
{
    float direction_x, direction_z; ///< of length 1
    float length, height;
    float lengths_a_second, start;
};
constexpr Wave waves[] = {{0.8f, 0.6f, 5.0f, 0.13f, 1.0f, 0.0f},
                          {0.96f, -0.28f, 3.1f, 0.08f, 1.0f, 0.3f},
                          {-0.28f, 0.96f, 1.9f, 0.045f, 1.0f, 0.7f}};

/// Waves lie down where the ground rises.
float find_calm(float x, float z)
{
    return std::min(1.0f, std::max(0.25f, 0.2f + 0.5f * -island_height(x, z)));
}

V3f velocity_at(float x, float z, float phase)
{
    constexpr float step = 1.0f / 256.0f; // seconds
    return (sea_point(x, z, phase + step) - sea_point(x, z, phase - step)) / (2.0f * step);
}

} // namespace

V3f sea_point(float x, float z, float phase)
{
    V3f point(x, 0.0f, z);
    for (const Wave& wave : waves) {
        const float along = (x * wave.direction_x + z * wave.direction_z) / wave.length;
        const float angle = two_pi * (along - wave.lengths_a_second * phase + wave.start);
        const float height = wave.height * find_calm(x, z);
        point += V3f(wave.direction_x * std::cos(angle), std::sin(angle), wave.direction_z * std::cos(angle)) * height;
    }
    return point;
}

void add_sea(const OObject& scene, std::uint32_t sampling)
{
    constexpr int cells = 28;
    OSubD sea(OXform(scene, "sea"), "seaShape", sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        const GridMesh grid({cells, cells}, [phase = phase_of(frame)](float u, float v) {
            return sea_point(sea_size * (u - 0.5f), sea_size * (0.5f - v), phase);
        });
        sea.getSchema().set(grid.make_subdivision_sample());
        if (frame > 0) continue;
        add_group(sea.getSchema(), "blue_water", grid.choose_faces([](int, int) { return true; }));
    }
}

/// Flakes on the crests of the waves: others at every frame, moved by their velocities between frames.
void add_foam(const OObject& scene, std::uint32_t sampling)
{
    constexpr int cells = 44;
    constexpr float cell = sea_size / cells, crest = 0.12f;
    OPolyMesh foam(OXform(scene, "foam"), "white_foamShape", sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        std::vector<V3f> points, velocities;
        std::vector<std::int32_t> counts, indices;
        Scatter scatter;
        for (int i = 0; i < cells * cells; ++i) {
            const float x = cell * (static_cast<float>(i % cells) + scatter.next()) - 0.5f * sea_size;
            const float z = cell * (static_cast<float>(i / cells) + scatter.next()) - 0.5f * sea_size;
            const float size = 0.11f * (0.4f + scatter.next()), turn = two_pi * scatter.next();
            const float threshold = crest + 0.08f * scatter.next();
            if (sea_point(x, z, phase_of(frame)).y < threshold) continue;
            const int corner_count = 5;
            counts.push_back(corner_count);
            for (int corner = 0; corner < corner_count; ++corner) {
                const float angle = turn - two_pi * static_cast<float>(corner) / corner_count;
                const float corner_x = x + size * std::cos(angle), corner_z = z - size * std::sin(angle);
                indices.push_back(static_cast<std::int32_t>(points.size()));
                points.push_back(sea_point(corner_x, corner_z, phase_of(frame)) + V3f(0.0f, foam_lift, 0.0f));
                velocities.push_back(velocity_at(corner_x, corner_z, phase_of(frame)));
            }
        }
        OPolyMeshSchema::Sample sample(P3fArraySample(points), indices, counts);
        sample.setVelocities(V3fArraySample(velocities));
        foam.getSchema().set(sample);
    }
}

/// Drops that the waves throw up at the shore, one after another, each with the velocity of its place.
void add_spray(const OObject& scene, std::uint32_t sampling)
{
    constexpr int drop_count = 150;
    constexpr float gravity = 9.81f;
    OPoints spray(add_place(scene, "spray", V3d(-2.6, 0.0, 0.9)), "white_sprayShape", sampling);
    for (int frame = 0; frame < frame_count; ++frame) {
        std::vector<V3f> positions, velocities;
        std::vector<std::uint64_t> ids;
        Scatter scatter;
        for (int drop = 0; drop < drop_count; ++drop) {
            const float direction = 0.6f * pi + 0.9f * scatter.next(), spread = 1.3f * scatter.next();
            const float rise = 3.2f + 1.6f * scatter.next(), start = scatter.next();
            const float age = std::fmod(phase_of(frame) + start, 1.0f);
            const V3f start_velocity(-spread * std::cos(direction), rise, spread * std::sin(direction));
            positions.push_back(start_velocity * age - V3f(0.0f, 0.5f * gravity * age * age, 0.0f));
            velocities.push_back(start_velocity - V3f(0.0f, gravity * age, 0.0f));
            ids.push_back(static_cast<std::uint64_t>(drop));
        }
        spray.getSchema().set(
            OPointsSchema::Sample(P3fArraySample(positions), UInt64ArraySample(ids), V3fArraySample(velocities)));
    }
}

} // namespace sample
