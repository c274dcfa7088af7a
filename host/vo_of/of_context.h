/// Place in the project that holds items.
#pragma once

#include <memory>

#include "vo_core/core_string.h"
#include "vo_of/of_context_engine.h"

class VO_HOST_EXPORT OfContext : public CoreBaseObject
{
public:
    /// `engine` may be null: a plain context.
    explicit OfContext(const CoreString& name, std::unique_ptr<OfContextEngine> engine = nullptr);
    ~OfContext() override;

    static const CoreClassInfo& class_info();
    const CoreClassInfo& get_class_info() const override { return class_info(); }

    const CoreString& get_name() const { return name_; }
    /// Owned by the context; null for a plain one.
    OfContextEngine* get_engine() const { return engine_.get(); }

private:
    CoreString name_;
    std::unique_ptr<OfContextEngine> engine_;
};
