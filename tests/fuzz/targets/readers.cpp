/// Every AbcInput reader, at several times.
#include "input.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    require_promises(vo_fuzz::run_readers_on_bytes(input_bytes(data, size)));
    return 0;
}
