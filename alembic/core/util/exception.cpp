/// The exception's out-of-line members: its type information lives here once, so every library catches the same type.
#include <Alembic/Util/Exception.h>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

Exception::Exception() noexcept = default;

Exception::Exception(const std::string& str)
    : std::string(str)
{
}

Exception::Exception(const Exception& exception) = default;
Exception& Exception::operator=(const Exception& exception) = default;
Exception::~Exception() noexcept = default;

const char* Exception::what() const noexcept
{
    return c_str();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
