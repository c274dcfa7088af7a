/// Objects that know their class.
#include "vo_core/core_base_object.h"

CoreBaseObject::~CoreBaseObject() = default;

const CoreClassInfo& CoreBaseObject::class_info()
{
    static const CoreClassInfo info("CoreBaseObject", nullptr);
    return info;
}

bool CoreClassInfo::is_kindof(const CoreClassInfo& other) const
{
    for (const CoreClassInfo* info = this; info; info = info->base_)
        if (info == &other) return true;
    return false;
}
