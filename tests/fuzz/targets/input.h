/// @file
/// What fuzz targets share.
#pragma once

#include "support/reader_run.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

inline std::string input_bytes(const std::uint8_t* data, std::size_t size)
{
    return std::string(reinterpret_cast<const char*>(data), size);
}

/// Ends the program when the module broke a promise.
inline void require_promises(const vo_fuzz::ReaderReport& report)
{
    for (const std::string& promise : report.broken)
        std::fprintf(stderr, "broken promise: %s\n", promise.c_str());
    if (!report.broken.empty()) std::abort();
}
