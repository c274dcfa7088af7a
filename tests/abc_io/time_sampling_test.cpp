/// Stored samples as host samplings, and the samples to read at a time.
#include <abc_input.h>
#include <abc_internal.h>

#include <gmock/gmock.h>

#include <random>

using Alembic::AbcGeom::TimeSampling;
using Alembic::AbcGeom::TimeSamplingType;
using testing::DoubleEq;
using testing::ElementsAre;
using Times = std::vector<double>;

namespace {

std::vector<double> times_of(const GMathTimeSampling& sampling)
{
    std::vector<double> times;
    for (unsigned int i = 0; i < sampling.get_sample_count(); ++i)
        times.push_back(sampling.get_sample_time(i));
    return times;
}

GMathTimeSampling frame_sampling(const TimeSampling& stored, std::size_t count, double start, double end)
{
    GMathTimeSampling result;
    AbcInternal::get_frame_sampling(std::make_shared<TimeSampling>(stored), count, start, end, result);
    return result;
}

TimeSampling acyclic(const Times& times)
{
    return TimeSampling(TimeSamplingType(TimeSamplingType::kAcyclic), times);
}

GMathTimeSampling sampling_of(std::initializer_list<double> times)
{
    return GMathTimeSampling(CoreArray<double>(times));
}

/// What compute_time_sampling yields, from outputs that held something else before.
struct Evaluation
{
    GMathTimeSampling relative = sampling_of({-1, -2, -3}), absolute = relative;
    unsigned int index = 77;
};

} // namespace

TEST(FrameSampling, UniformSamplesStayUniform)
{
    const GMathTimeSampling sampling = frame_sampling(TimeSampling(1.0 / 24, 0.0), 3, 0.0, 1.0);
    EXPECT_TRUE(sampling.is_uniform());
    EXPECT_THAT(times_of(sampling), ElementsAre(0.0, DoubleEq(1.0 / 24), DoubleEq(2.0 / 24)));
}

TEST(FrameSampling, EvenlySpacedTimesBecomeUniformOthersExplicit)
{
    EXPECT_TRUE(frame_sampling(acyclic({0.0, 0.5, 1.0}), 3, 0.0, 1.0).is_uniform());
    EXPECT_TRUE(frame_sampling(acyclic({0.0, 0.5 + 4e-9, 1.0}), 3, 0.0, 1.0).is_uniform());
    EXPECT_FALSE(frame_sampling(acyclic({0.0, 0.5 + 2e-8, 1.0}), 3, 0.0, 1.0).is_uniform());
    const GMathTimeSampling uneven = frame_sampling(acyclic({0.0, 0.4, 1.0}), 3, 0.0, 1.0);
    EXPECT_FALSE(uneven.is_uniform());
    EXPECT_EQ(times_of(uneven), (Times{0.0, 0.4, 1.0}));
    EXPECT_TRUE(frame_sampling(acyclic({0.0, 0.4, 1.0}), 3, 0.1, 0.3).is_uniform()); // two samples
    EXPECT_EQ(times_of(frame_sampling(acyclic({0.0, 0.4, 1.0}), 3, 0.1, 0.3)), (Times{0.0, 0.4}));

    // A shutter that opens twice per second: uneven over two cycles, even when only every cycle's half is covered.
    const TimeSampling cyclic(TimeSamplingType(2, 1.0), Times{0.0, 0.25});
    EXPECT_EQ(times_of(frame_sampling(cyclic, 4, 0.0, 2.0)), (Times{0.0, 0.25, 1.0, 1.25}));
}

TEST(FrameSampling, WhatLiesOutsideIsClamped)
{
    const TimeSampling stored(1.0, 10.0);
    EXPECT_EQ(times_of(frame_sampling(stored, 4, -5, 2)), (Times{10.0}));
    EXPECT_EQ(times_of(frame_sampling(stored, 4, 50, 60)), (Times{13.0}));
    EXPECT_EQ(times_of(frame_sampling(stored, 4, 0, 60)), (Times{10.0, 11.0, 12.0, 13.0}));
    EXPECT_EQ(times_of(frame_sampling(stored, 4, 13, 10)), (Times{13.0})) << "an interval that ends before it starts";
    EXPECT_EQ(times_of(frame_sampling(stored, 0, 0, 60)), (Times{0.0})) << "an object without samples";
}

TEST(FrameSampling, TheCoveredSamplesAreThoseStoredAroundTheInterval)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> step(0.01, 1.0), place(-1.0, 6.0);
    for (int round = 0; round < 200; ++round) {
        Times stored = {0.0};
        while (stored.size() < 9)
            stored.push_back(stored.back() + step(random));
        double start = place(random), end = place(random);
        if (end < start) std::swap(start, end);
        const Times covered = times_of(frame_sampling(acyclic(stored), stored.size(), start, end));
        const auto first = std::find(stored.begin(), stored.end(), covered.front());
        ASSERT_LE(covered.size(), std::size_t(stored.end() - first)) << "round " << round;
        EXPECT_TRUE(covered.front() <= start + 1e-5 || first == stored.begin()) << "round " << round;
        EXPECT_TRUE(covered.back() >= end - 1e-5 || covered.back() == stored.back()) << "round " << round;
        for (std::size_t i = 0; i < covered.size(); ++i)
            EXPECT_NEAR(covered[i], first[std::ptrdiff_t(i)], 1e-8) << "round " << round;
    }
}

TEST(EvaluationSampling, OneSamplingYieldsTheNearestOrAllSamples)
{
    Evaluation one;
    AbcInput::compute_time_sampling(sampling_of({0, 0.5, 1}), 0.7, false, one.relative, one.absolute, one.index);
    EXPECT_EQ(one.index, 1u);
    EXPECT_EQ(times_of(one.absolute), (Times{0.5}));
    EXPECT_THAT(times_of(one.relative), ElementsAre(DoubleEq(-0.2)));

    Evaluation all;
    AbcInput::compute_time_sampling(sampling_of({0, 0.5, 1}), 0.5, true, all.relative, all.absolute, all.index);
    EXPECT_EQ(all.index, 77u);
    EXPECT_EQ(times_of(all.absolute), (Times{0, 0.5, 1}));
    EXPECT_EQ(times_of(all.relative), (Times{-0.5, 0, 0.5}));
}

TEST(EvaluationSampling, TwoSamplingsAreJoinedAroundTheSplit)
{
    const GMathTimeSampling first = sampling_of({9.5, 10.0}), second = sampling_of({0.0, 0.5});
    Evaluation before, after;
    AbcInput::compute_time_sampling(first, second, 0.0, true, 1.0, true, before.relative, before.absolute,
                                    before.index);
    EXPECT_EQ(times_of(before.absolute), (Times{9.5, 10.0, 0.0, 0.5}));
    EXPECT_EQ(times_of(before.relative), (Times{8.5, 9.0, 0.0, 0.5}));
    AbcInput::compute_time_sampling(first, second, 0.25, false, 1.0, true, after.relative, after.absolute, after.index);
    EXPECT_EQ(times_of(after.absolute), (Times{9.5, 10.0, 0.0, 0.5}));
    EXPECT_EQ(times_of(after.relative), (Times{9.25, 9.75, 0.75, 1.25}));
    EXPECT_EQ(after.index, 77u);
}

TEST(EvaluationSampling, OfTwoSamplingsTheOneThatHoldsTheTimeIsUsed)
{
    const GMathTimeSampling first = sampling_of({1.0, 2.0}), second = sampling_of({2.5, 3.0});
    for (const auto& [time, sample, index] :
         {std::tuple(1.2, 1.0, 0u), {2.0, 2.0, 1u}, {2.9, 3.0, 1u}, {0.5, 2.5, 0u}}) {
        Evaluation evaluation;
        AbcInput::compute_time_sampling(first, second, time, true, 9.0, false, evaluation.relative, evaluation.absolute,
                                        evaluation.index);
        EXPECT_EQ(times_of(evaluation.absolute), (Times{sample})) << time;
        EXPECT_EQ(times_of(evaluation.relative), (Times{sample - time})) << time;
        EXPECT_EQ(evaluation.index, index) << time;
    }
}

TEST(EvaluationSampling, PropertiesYieldTheStoredSamplesIndex)
{
    AbcInput::PlainPropertyInfo info, second;
    info.time_sampling = sampling_of({1.0, 2.0});
    info.sample_indices = {10, 11};
    info.multi_sample = true;
    second.time_sampling = sampling_of({0.0, 0.5});
    second.sample_indices = {0, 1};
    const auto evaluate = [&](double time, bool all, AbcInput::PlainPropertyInfo* other) {
        Evaluation evaluation;
        AbcInput::compute_time_sampling(info, time, 2.0, 1.0, all, evaluation.index, evaluation.relative,
                                        evaluation.absolute, other);
        return evaluation;
    };
    EXPECT_EQ(evaluate(1.9, false, nullptr).index, 11u);
    EXPECT_EQ(evaluate(1.9, true, nullptr).index, 10u);
    EXPECT_EQ(times_of(evaluate(1.5, true, nullptr).relative), (Times{-0.5, 0.5}));
    EXPECT_EQ(evaluate(0.4, false, &second).index, 1u);
    EXPECT_EQ(evaluate(1.9, false, &second).index, 11u);
    EXPECT_EQ(times_of(evaluate(1.5, true, &second).relative), (Times{-1.5, -0.5, -1.5, -1.0})); // before the split
    EXPECT_EQ(evaluate(9.0, false, nullptr).index, 11u) << "a second record that is missing is not looked into";
    info.multi_sample = false;
    const Evaluation single = evaluate(1.9, true, nullptr);
    EXPECT_EQ(times_of(single.absolute), (Times{2.0}));
    EXPECT_EQ(single.index, 11u);
    info.time_sampling = sampling_of({1.0});
    EXPECT_EQ(evaluate(5.0, false, nullptr).index, 10u);
    info.sample_indices.clear();
    EXPECT_EQ(evaluate(5.0, false, nullptr).index, 0u) << "a table that is missing is not looked into";
}
