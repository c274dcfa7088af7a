/// A 128-bit hash value.
#pragma once

#include <Alembic/Util/Foundation.h>

#include <iosfwd>
#include <string>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

/// Sixteen bytes, zero by default, also seen as two 64-bit words. Ordered by the first word, then the second.
class ALEMBIC_EXPORT Digest : public totally_ordered<Digest>
{
public:
    union {
        uint8_t d[16];
        uint64_t words[2];
    };

    Digest()
        : words{0, 0}
    {
    }
    Digest(const Digest& copy) = default;
    Digest& operator=(const Digest& copy) = default;

    uint8_t& operator[](size_t i) { return d[i]; }      ///< byte `i`, below 16
    uint8_t operator[](size_t i) const { return d[i]; } ///< byte `i`, below 16

    /// 32 lowercase hexadecimal digits, byte 0 first.
    std::string str() const;
    /// Writes str() to the stream.
    void print(std::ostream& ostr) const;

    bool operator==(const Digest& rhs) const { return words[0] == rhs.words[0] && words[1] == rhs.words[1]; }
    bool operator<(const Digest& rhs) const
    {
        return words[0] < rhs.words[0] || (words[0] == rhs.words[0] && words[1] < rhs.words[1]);
    }
};

ALEMBIC_EXPORT std::ostream& operator<<(std::ostream& ostr, const Digest& a);

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
