/// What is known of a class at run time: its name and its base.
#pragma once

#include "vo_core/export.h"

/// One static instance per class; two class infos are the same only when they are the same object.
class VO_HOST_EXPORT CoreClassInfo
{
public:
    constexpr CoreClassInfo(const char* name, const CoreClassInfo* base)
        : name_(name)
        , base_(base)
    {
    }
    CoreClassInfo(const CoreClassInfo&) = delete;
    CoreClassInfo& operator=(const CoreClassInfo&) = delete;

    const char* get_name() const { return name_; }
    const CoreClassInfo* get_base() const { return base_; } ///< null for the root of a tree of classes
    /// Whether this class is `other` or derives from it.
    bool is_kindof(const CoreClassInfo& other) const;

private:
    const char* name_;
    const CoreClassInfo* base_;
};
