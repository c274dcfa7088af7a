/// CapturedLog: what the module logs while the object lives.
#pragma once

#include <vo_core/core_log_handler.h>

#include <mutex>
#include <string>
#include <utility>
#include <vector>

/// Takes the place of the process's log handler until it goes. Keeps messages as "LEVEL TEXT".
class CapturedLog : public CoreLogHandler
{
public:
    explicit CapturedLog(int level = LEVEL_INFO)
        : CoreLogHandler(level)
        , previous_(s_main_log_handler.exchange(this))
    {
    }
    ~CapturedLog() override { s_main_log_handler = previous_; }

    void log(int level, const CoreLogStream& message) override
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        messages_.push_back(std::to_string(level) + " " + message.get_data());
    }

    /// The messages since the last call.
    std::vector<std::string> take()
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        return std::exchange(messages_, {});
    }

private:
    CoreLogHandler* previous_;
    std::mutex mutex_;
    std::vector<std::string> messages_;
};
