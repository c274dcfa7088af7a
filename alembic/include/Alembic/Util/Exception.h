/// The one exception type the library throws, and the macro that throws it.
#pragma once

#include <Alembic/Util/Foundation.h>

#include <exception>
#include <sstream>
#include <string>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

/// An error with its text: what went wrong, and in which file or object.
class ALEMBIC_EXPORT Exception : public std::string, public std::exception
{
public:
    Exception() noexcept;
    explicit Exception(const std::string& str);
    Exception(const Exception& exception);
    Exception& operator=(const Exception& exception);
    ~Exception() noexcept override;

    /// The text; owned by the exception.
    const char* what() const noexcept override;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic

/// Throws an Exception; `TEXT` is a chain: `ALEMBIC_THROW("index " << index)`.
#define ALEMBIC_THROW(TEXT)                                                                                            \
    do {                                                                                                               \
        std::ostringstream alembic_throw_text_;                                                                        \
        alembic_throw_text_ << TEXT;                                                                                   \
        throw ::Alembic::Util::Exception(alembic_throw_text_.str());                                                   \
    } while (0)
