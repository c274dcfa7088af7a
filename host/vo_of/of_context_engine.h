/// What makes a context do its work.
#pragma once

#include "vo_core/core_base_object.h"

class VO_HOST_EXPORT OfContextEngine : public CoreBaseObject
{
public:
    static const CoreClassInfo& class_info();
    const CoreClassInfo& get_class_info() const override { return class_info(); }
};
