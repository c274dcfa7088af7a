/// What every handle of the typed layer is built on: it owns an error handler.
#pragma once

#include <Alembic/Abc/ErrorHandler.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT Base
{
public:
    /// Mutable from a const handle: reading, too, can fail and be logged.
    ErrorHandler& getErrorHandler() const { return error_handler_; }
    ErrorHandler::Policy getErrorHandlerPolicy() const { return error_handler_.getPolicy(); }

protected:
    Base() = default;
    explicit Base(ErrorHandler::Policy policy)
        : error_handler_(policy)
    {
    }
    Base(const Base&) = default;
    Base(Base&&) = default;
    Base& operator=(const Base&) = default;
    Base& operator=(Base&&) = default;
    ~Base() = default;

private:
    mutable ErrorHandler error_handler_;
};

inline ErrorHandler::Policy GetErrorHandlerPolicy(const Base& handle)
{
    return handle.getErrorHandlerPolicy();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
