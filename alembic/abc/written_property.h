/// What scalar and array properties do alike with their writer.
#pragma once

#include <Alembic/Abc/ErrorHandler.h>
#include <Alembic/Abc/Foundation.h>

#include <memory>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// Runs `operation` on a handle's writer. What it throws, and that there is no writer, is reported to the handle's
/// error handler with `context`, the name of the call.
template <class Writer, class Operation>
void with_writer(ErrorHandler& error_handler, const std::shared_ptr<Writer>& writer, const char* context,
                 const Operation& operation)
{
    ErrorHandler::Context error_context(error_handler, context);
    try {
        if (!writer) ABCA_THROW("The property is invalid");
        operation(*writer);
    } catch (...) {
        error_context.report_current();
    }
}

/// Adds the time sampling to the archive and makes it the writer's. Null changes nothing.
template <class Writer>
void change_time_sampling(Writer& writer, const AbcCoreAbstract::TimeSamplingPtr& time)
{
    if (time) writer.setTimeSamplingIndex(writer.getObject()->getArchive()->addTimeSampling(*time));
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
