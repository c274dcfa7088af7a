/// What a handle does with an error: throw it, log it, or log and print it; and the macros that guard its members.
#pragma once

#include <Alembic/Abc/Foundation.h>

#include <exception>
#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// The policy of one handle, and its log. Not locked: a handle belongs to one thread at a time.
class ALEMBIC_EXPORT ErrorHandler
{
public:
    enum Policy {
        kQuietNoopPolicy = 0, ///< the text goes to the log
        kNoisyNoopPolicy = 1, ///< the text goes to the log and to standard error
        kThrowPolicy = 2      ///< a Util::Exception with the text is thrown; the log stays empty
    };

    /// Stands for an exception of no known type.
    enum UnknownExceptionFlag { kUnknownException = 0 };

    /// A handler together with the name of the guarded member. Refers to both; they must outlive it.
    class ALEMBIC_EXPORT Context
    {
    public:
        Context(ErrorHandler& handler, const char* context)
            : handler_(handler)
            , context_(context)
        {
        }
        void operator()(std::exception& exception) { handler_(exception, context_); }
        void operator()(const std::string& errMsg) { handler_(errMsg, context_); }
        void operator()(UnknownExceptionFlag flag) { handler_(flag, context_); }

        /// Reports the exception in flight; to be called from a catch block only.
        void report_current();

    private:
        ErrorHandler& handler_;
        const char* context_;
    };

    ErrorHandler() = default;
    ErrorHandler(Policy policy)
        : policy_(policy)
    {
    }

    /// Reports an error under the policy: `CONTEXT\nERROR: EXCEPTION:\nwhat()`, `CONTEXT\nERROR:\nmessage`, or
    /// `CONTEXT\nERROR: UNKNOWN EXCEPTION\n`.
    void operator()(std::exception& exception, const std::string& context = "");
    void operator()(const std::string& errMsg, const std::string& context = "");
    void operator()(UnknownExceptionFlag flag, const std::string& context = "");

    Policy getPolicy() const { return policy_; }
    void setPolicy(Policy policy) { policy_ = policy; }

    /// All texts so far, each followed by a newline.
    const std::string getErrorLog() const { return log_; }
    /// The log is empty.
    bool valid() const { return log_.empty(); }
    void clear() { log_.clear(); }

private:
    void report(const std::string& text);

    Policy policy_ = kThrowPolicy;
    std::string log_;
};

/// The policy of a bare reader or writer, which has none of its own: throw.
inline ErrorHandler::Policy GetErrorHandlerPolicy(const AbcA::ArchiveReaderPtr&)
{
    return ErrorHandler::kThrowPolicy;
}
inline ErrorHandler::Policy GetErrorHandlerPolicy(const AbcA::ArchiveWriterPtr&)
{
    return ErrorHandler::kThrowPolicy;
}
inline ErrorHandler::Policy GetErrorHandlerPolicy(const AbcA::ObjectReaderPtr&)
{
    return ErrorHandler::kThrowPolicy;
}
inline ErrorHandler::Policy GetErrorHandlerPolicy(const AbcA::ObjectWriterPtr&)
{
    return ErrorHandler::kThrowPolicy;
}
inline ErrorHandler::Policy GetErrorHandlerPolicy(const AbcA::CompoundPropertyReaderPtr&)
{
    return ErrorHandler::kThrowPolicy;
}
inline ErrorHandler::Policy GetErrorHandlerPolicy(const AbcA::CompoundPropertyWriterPtr&)
{
    return ErrorHandler::kThrowPolicy;
}
inline ErrorHandler::Policy GetErrorHandlerPolicy(const AbcA::ScalarPropertyReaderPtr&)
{
    return ErrorHandler::kThrowPolicy;
}
inline ErrorHandler::Policy GetErrorHandlerPolicy(const AbcA::ScalarPropertyWriterPtr&)
{
    return ErrorHandler::kThrowPolicy;
}
inline ErrorHandler::Policy GetErrorHandlerPolicy(const AbcA::ArrayPropertyReaderPtr&)
{
    return ErrorHandler::kThrowPolicy;
}
inline ErrorHandler::Policy GetErrorHandlerPolicy(const AbcA::ArrayPropertyWriterPtr&)
{
    return ErrorHandler::kThrowPolicy;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic

/// Begins the guarded body of a member; `CONTEXT` is a string literal that heads the texts of errors in it.
#define ALEMBIC_ABC_SAFE_CALL_BEGIN(CONTEXT)                                                                           \
    do {                                                                                                               \
        ::Alembic::Abc::ErrorHandler::Context alembic_error_context_(this->getErrorHandler(), CONTEXT);                \
        try {

/// Ends it: what was thrown inside is reported to the handle's error handler.
#define ALEMBIC_ABC_SAFE_CALL_END()                                                                                    \
    }                                                                                                                  \
    catch (...)                                                                                                        \
    {                                                                                                                  \
        alembic_error_context_.report_current();                                                                       \
    }                                                                                                                  \
    }                                                                                                                  \
    while (0)

/// Ends it, and makes the handle invalid before the error is reported.
#define ALEMBIC_ABC_SAFE_CALL_END_RESET()                                                                              \
    }                                                                                                                  \
    catch (...)                                                                                                        \
    {                                                                                                                  \
        this->reset();                                                                                                 \
        alembic_error_context_.report_current();                                                                       \
    }                                                                                                                  \
    }                                                                                                                  \
    while (0)
