/// Digests as text.
#include <Alembic/Util/Digest.h>

#include <ostream>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

std::string Digest::str() const
{
    static const char digits[] = "0123456789abcdef";
    std::string text;
    text.reserve(32);
    for (const uint8_t byte : d) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

void Digest::print(std::ostream& ostr) const
{
    ostr << str();
}

std::ostream& operator<<(std::ostream& ostr, const Digest& a)
{
    a.print(ostr);
    return ostr;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
