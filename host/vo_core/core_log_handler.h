/// Where log messages go.
#pragma once

#include <atomic>
#include <iosfwd>
#include <mutex>

#include "vo_core/core_atomic_pointer.h"
#include "vo_core/core_log_stream.h"

/// Writes messages to a stream. Derive from it and override `log` to send them elsewhere.
class VO_HOST_EXPORT CoreLogHandler
{
public:
    enum Level {
        LEVEL_NONE = 0,
        LEVEL_ERROR = 1,
        LEVEL_WARNING = 2,
        LEVEL_INFO = 3, ///< statistics and information
    };

    /// Messages of `level` and below are written; to standard error when no stream is given. The stream must outlive
    /// the handler.
    explicit CoreLogHandler(int level = LEVEL_WARNING, std::ostream* stream = nullptr);
    virtual ~CoreLogHandler();
    CoreLogHandler(const CoreLogHandler&) = delete;
    CoreLogHandler& operator=(const CoreLogHandler&) = delete;

    /// Callers build a message only when this is at least the message's level.
    int get_level() const { return level_.load(std::memory_order_relaxed); }
    void set_level(int level) { level_.store(level, std::memory_order_relaxed); }

    /// Writes the message as it is (its text ends in "\n") and flushes, unless its level is above the handler's.
    /// Several threads may log at once: each message stays in one piece.
    virtual void log(int level, const CoreLogStream& message);

    /// The process's handler: never null at start; logs to standard error. A replacement must outlive its use; null
    /// silences the log, so callers test for it.
    static CoreAtomicPointer<CoreLogHandler> s_main_log_handler;

private:
    std::atomic<int> level_;
    std::mutex stream_mutex_;
    std::ostream& stream_;
};
