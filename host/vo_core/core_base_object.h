/// Base of the host's objects that are asked for their class at run time.
#pragma once

#include "vo_core/core_class_info.h"

/// A derived class gives itself a static `class_info()` and returns it from `get_class_info`.
class VO_HOST_EXPORT CoreBaseObject
{
public:
    CoreBaseObject() = default;
    virtual ~CoreBaseObject();
    CoreBaseObject(const CoreBaseObject&) = delete;
    CoreBaseObject& operator=(const CoreBaseObject&) = delete;

    static const CoreClassInfo& class_info();
    virtual const CoreClassInfo& get_class_info() const { return class_info(); }
    bool is_kindof(const CoreClassInfo& info) const { return get_class_info().is_kindof(info); }
};
