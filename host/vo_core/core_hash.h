/// Hashes of bytes.
#pragma once

#include <cstddef>

#include "vo_core/export.h"

class VO_HOST_EXPORT CoreHash
{
public:
    /// Bob Jenkins' one-at-a-time hash of `length` bytes, 32 bits; the same on every platform. 0 for no bytes.
    static unsigned int generate_jenkins(const void* data, std::size_t length);
};
