/// A walk over every object, property and value, through the core and the typed layers.
#include "input.h"

#include "support/archive_walk.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    vo_fuzz::walk_bytes(input_bytes(data, size), true);
    return 0;
}
