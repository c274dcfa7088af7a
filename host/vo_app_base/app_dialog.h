/// Answer to a question.
#pragma once

#include "vo_core/export.h"

/// A number: 0 no, 1 yes, 2 and above the extra buttons of the question in their order.
class VO_HOST_EXPORT AppDialog
{
public:
    explicit AppDialog(const int& value)
        : value_(value)
    {
    }
    static AppDialog yes() { return AppDialog(1); }
    static AppDialog no() { return AppDialog(0); }

    bool is_yes() const { return value_ == 1; }
    bool is_no() const { return value_ == 0; }
    int get_value() const { return value_; }

    bool operator==(const AppDialog& other) const { return value_ == other.value_; }
    bool operator!=(const AppDialog& other) const { return value_ != other.value_; }

private:
    int value_;
};
