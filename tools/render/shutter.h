/// Shutter: the time that a picture shows.
#pragma once

/// Open from half its length before `time` to half its length after it, all in seconds. Motion is a chain of straight
/// lines between steps.
struct Shutter
{
    static constexpr int moving_step_count = 5; ///< enough for a quarter turn to look round

    double time = 0.0;
    double length = 0.0; ///< 0: nothing is blurred

    int get_step_count() const { return length > 0.0 ? moving_step_count : 1; }
    /// Of a step, relative to `time`.
    double get_step_offset(int step) const
    {
        return length > 0.0 ? length * (static_cast<double>(step) / (moving_step_count - 1) - 0.5) : 0.0;
    }
};
