/// Composing and delivering error texts.
#include <Alembic/Abc/ErrorHandler.h>

#include <iostream>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

void ErrorHandler::report(const std::string& text)
{
    if (policy_ == kThrowPolicy) throw Exception(text);
    if (policy_ == kNoisyNoopPolicy) std::cerr << text << std::endl;
    log_ += text;
    log_ += '\n';
}

void ErrorHandler::operator()(std::exception& exception, const std::string& context)
{
    report(context + "\nERROR: EXCEPTION:\n" + exception.what());
}

void ErrorHandler::operator()(const std::string& errMsg, const std::string& context)
{
    report(context + "\nERROR:\n" + errMsg);
}

void ErrorHandler::operator()(UnknownExceptionFlag, const std::string& context)
{
    report(context + "\nERROR: UNKNOWN EXCEPTION\n");
}

void ErrorHandler::Context::report_current()
{
    try {
        throw;
    } catch (std::exception& exception) { // first: the library's own exception is a string, too
        handler_(exception, context_);
    } catch (const std::string& message) {
        handler_(message, context_);
    } catch (...) {
        handler_(kUnknownException, context_);
    }
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
