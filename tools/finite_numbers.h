/// FiniteNumbers: what geometry files get for numbers that are none.
#pragma once

#include <cmath>
#include <cstdint>

/// Takes numbers as they are, counts those that are not finite and makes them 0: many readers of text formats stop at
/// "nan".
class FiniteNumbers
{
public:
    float take(float value)
    {
        if (std::isfinite(value)) return value;
        ++bad_count_;
        return 0.0f;
    }
    std::uint64_t get_bad_count() const { return bad_count_; }

private:
    std::uint64_t bad_count_ = 0;
};
