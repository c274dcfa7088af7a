/// Positions and velocities of moving points at a time: the evaluation that meshes, curves and points share.
#pragma once

#include "blend.h"
#include "reader_scope.h"
#include "static_positions.h"

#include <Alembic/AbcGeom/All.h>

#include <cstddef>

/// What an evaluation reads, and by which rules.
struct MovingPoints
{
    Alembic::AbcGeom::IP3fArrayProperty positions;
    Alembic::AbcGeom::IV3fArrayProperty velocities;   ///< invalid, or without samples, where none are stored
    Alembic::AbcGeom::AbcA::TimeSamplingPtr sampling; ///< times of the samples
    std::size_t sample_count = 0;                     ///< samples to choose from; a property with fewer is clamped
    bool keep_identity = true;                        ///< point i is the same point in every sample
    BlendRounding rounding = BlendRounding::FLOAT_PRODUCTS; ///< of blends and differences
    const StaticPositions* kept = nullptr; ///< where unchanging positions are kept for the next time; null: nowhere
};

/// What the schemas of meshes, curves and points have in common, of `typed`'s; see MovingPoints for `kept`.
template <class Kind>
MovingPoints moving_points_of(const Kind& typed, const StaticPositions* kept)
{
    const auto& schema = typed.getSchema();
    MovingPoints points;
    points.positions = schema.getPositionsProperty();
    points.velocities = schema.getVelocitiesProperty();
    points.sampling = positions_sampling(schema, typed);
    points.sample_count = points.positions.getNumSamples();
    points.kept = kept;
    return points;
}

/// Where a bound object keeps its unchanging positions; null for an object that the host made itself.
inline const StaticPositions* kept_with(const Alembic::Abc::IObject& object)
{
    return dynamic_cast<const StaticPositions*>(&object);
}

/// Positions at `time` (seconds) and the velocity of each (units per second), one element per point in stored order.
/// Stored velocities (of the earlier sample) are used unless `ignore_velocities`, or unless there are more or fewer of
/// them than positions; else velocities are differences between samples, or zero where points cannot be followed. Both
/// outputs stay untouched when there are no samples. Alembic's exceptions pass.
void evaluate_moving_points(const MovingPoints& points, double time, bool ignore_velocities,
                            CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities);
