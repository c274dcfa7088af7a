/// Random samples of moving points, and what an evaluation with products in double must make of them.
#pragma once

#include <Alembic/AbcGeom/All.h>
#include <gtest/gtest.h>
#include <vo_core/core_array.h>
#include <vo_gmath/gmath_vec3.h>

#include <memory>
#include <random>
#include <vector>

/// Positions, sample by sample.
using Samples = std::vector<std::vector<Alembic::AbcGeom::V3f>>;

/// As many points in every sample, at uneven times.
struct MovingSamples
{
    MovingSamples(unsigned int random_seed, std::size_t count)
        : seed(random_seed)
    {
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> number(-1000.0f, 1000.0f);
        samples.assign(times.size(), std::vector<Alembic::AbcGeom::V3f>(count));
        for (auto& sample : samples)
            for (auto& point : sample)
                for (unsigned int axis = 0; axis < 3; ++axis)
                    point[axis] = number(random);
    }

    Alembic::AbcGeom::TimeSamplingPtr sampling() const
    {
        using namespace Alembic::AbcGeom;
        return std::make_shared<TimeSampling>(TimeSamplingType(TimeSamplingType::kAcyclic), times);
    }

    /// `evaluate(time, positions, velocities)` gives the stored positions at and near stored times and outside them,
    /// and in between both samples, each weighted in double and rounded to float before the two are added.
    template <class Evaluate>
    void expect_stated_values(Evaluate&& evaluate) const
    {
        const std::size_t last = times.size() - 1;
        for (std::size_t s = 0; s <= last; ++s) {
            const std::size_t next = s < last ? s + 1 : s;
            const double span = s < last ? times[next] - times[s] : 1.0;
            for (const double time :
                 {times[s], times[s] + 0.0009, s == 0 ? -1e6 : times[s], s == last ? 1e6 : times[s]})
                expect_at(time, s, next, 0.0, 1.0 / span, evaluate);
            if (s == last) break;
            for (const double part : {0.5, 0.1, 0.93}) {
                const double time = times[s] + part * span;
                expect_at(time, s, next, (time - times[s]) * (1.0 / span), 1.0 / span, evaluate);
            }
        }
    }

    const unsigned int seed;
    const std::vector<double> times = {-0.5, 0.25, 1.0, 4.0};
    Samples samples;

private:
    template <class Evaluate>
    void expect_at(double time, std::size_t floor, std::size_t ceil, double weight, double per_second,
                   Evaluate&& evaluate) const
    {
        CoreArray<GMathVec3<float>> positions, velocities;
        ASSERT_TRUE(evaluate(time, positions, velocities));
        ASSERT_EQ(positions.get_count(), samples[floor].size());
        ASSERT_EQ(velocities.get_count(), samples[floor].size());
        for (unsigned int i = 0; i < positions.get_count(); ++i)
            for (unsigned int axis = 0; axis < 3; ++axis) {
                const float from = samples[floor][i][axis], to = samples[ceil][i][axis];
                const float blended = float(from * (1.0 - weight)) + float(to * weight);
                ASSERT_EQ(positions[i][axis], weight == 0.0 ? from : blended) << "seed " << seed << ", time " << time;
                ASSERT_EQ(velocities[i][axis], float((to - from) * per_second)) << "seed " << seed << ", time " << time;
            }
    }
};
