/// Integers of the host whose width is part of the interface, whatever the platform's own types are.
#pragma once

#include <cstdint>

using CoreLong = std::int32_t; ///< the host's `long`: 32 bits everywhere
