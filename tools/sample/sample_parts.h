/// The parts of the sample scene: an island with a lighthouse, in a sea.
#pragma once

#include <Alembic/AbcGeom/All.h>

#include <cstdint>
#include <string>
#include <vector>

namespace sample {

constexpr int frame_count = 24;
constexpr double seconds_per_frame = 1.0 / 24.0;
constexpr float pi = 3.14159265359f, two_pi = 2.0f * pi;

/// Fraction of the second that has passed at a frame. All motion repeats after a second.
inline float phase_of(int frame)
{
    return static_cast<float>(frame) / frame_count;
}

/// Numbers from 0 to 1 that look random and are the same everywhere.
class Scatter
{
public:
    float next()
    {
        state_ = state_ * 1664525u + 1013904223u;
        return static_cast<float>(state_ >> 8) / 16777216.0f;
    }

private:
    std::uint32_t state_ = 1;
};

/// A transform that only moves, and stays.
Alembic::AbcGeom::OXform add_place(const Alembic::AbcGeom::OObject& parent, const std::string& name,
                                   const Imath::V3d& translation);

/// A shading group of a mesh's schema.
template <class Schema>
void add_group(Schema& mesh, const std::string& name, const std::vector<std::int32_t>& faces)
{
    mesh.createFaceSet(name).getSchema().set(Alembic::AbcGeom::OFaceSetSchema::Sample(faces));
}

/// The sea's surface at `phase`: where the water that rests at (x, 0, z) is.
Imath::V3f sea_point(float x, float z, float phase);
/// The ground of the island, y up.
float island_height(float x, float z);

/// Each adds its objects below `scene`; `sampling` is that of the frames.
void add_sea(const Alembic::AbcGeom::OObject& scene, std::uint32_t sampling);
void add_foam(const Alembic::AbcGeom::OObject& scene, std::uint32_t sampling);
void add_spray(const Alembic::AbcGeom::OObject& scene, std::uint32_t sampling);
void add_island(const Alembic::AbcGeom::OObject& scene);
void add_grass(const Alembic::AbcGeom::OObject& scene);
void add_lighthouse(const Alembic::AbcGeom::OObject& scene, std::uint32_t sampling);
void add_flag(const Alembic::AbcGeom::OObject& scene, std::uint32_t sampling);
void add_ring(const Alembic::AbcGeom::OObject& scene, std::uint32_t sampling);
void add_buoy(const Alembic::AbcGeom::OObject& scene, const std::string& name, const Imath::V3f& place,
              std::uint32_t sampling);

} // namespace sample
