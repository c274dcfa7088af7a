/// Sampler: numbers for the samples of a pixel, the same in every run.
#pragma once

#include <cmath>
#include <cstdint>

/// Two numbers from 0 to 1.
struct SamplePair
{
    float a, b;
};

/// Places of an additive sequence: they fill their space evenly for any number of samples. Turned by a hash of the
/// pixel, so that neighbours differ, except for the place in the pixel: the first sample of each is its middle.
class Sampler
{
public:
    Sampler(int x, int y, unsigned int sample)
        : pixel_(hash(static_cast<std::uint32_t>(x) * 0x9e3779b9u ^ hash(static_cast<std::uint32_t>(y))))
        , sample_(sample)
    {
    }

    SamplePair get_place() const { return {place(0.5, 0.8191725133961645), place(0.5, 0.6710436067037893)}; }
    float get_time() const { return place(turn(0), 0.5497004779019703); }
    SamplePair get_dome() const { return {place(turn(1), step_a), place(turn(2), step_b)}; }
    SamplePair get_light() const { return {place(turn(3), step_a), place(turn(4), step_b)}; }

private:
    static constexpr double step_a = 0.7548776662466927, step_b = 0.5698402909980532;

    static std::uint32_t hash(std::uint32_t value)
    {
        value = (value ^ (value >> 16)) * 0x7feb352du;
        value = (value ^ (value >> 15)) * 0x846ca68bu;
        return value ^ (value >> 16);
    }
    double turn(std::uint32_t dimension) const { return hash(pixel_ + dimension * 0x9e3779b9u) / 4294967296.0; }
    float place(double start, double step) const
    {
        const double value = start + sample_ * step;
        return static_cast<float>(value - std::floor(value));
    }

    std::uint32_t pixel_;
    unsigned int sample_;
};
