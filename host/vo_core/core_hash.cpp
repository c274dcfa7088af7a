/// Hashes of bytes.
#include "vo_core/core_hash.h"

unsigned int CoreHash::generate_jenkins(const void* data, std::size_t length)
{
    const unsigned char* const bytes = static_cast<const unsigned char*>(data);
    unsigned int hash = 0;
    for (std::size_t i = 0; i < length; ++i) {
        hash += bytes[i];
        hash += hash << 10;
        hash ^= hash >> 6;
    }
    hash += hash << 3;
    hash ^= hash >> 11;
    hash += hash << 15;
    return hash;
}
