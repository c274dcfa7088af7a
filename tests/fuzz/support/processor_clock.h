/// @file
/// Time that the program has worked since: unlike time on the wall it is the same on a busy machine.
#pragma once

#include <ctime>

namespace vo_fuzz {

class ProcessorClock
{
public:
    /// Of all threads together. What waits for ever is ended by the runner of the tests.
    double seconds() const { return static_cast<double>(std::clock() - start_) / CLOCKS_PER_SEC; }

private:
    const std::clock_t start_ = std::clock();
};

} // namespace vo_fuzz
