/// Engine of a context whose content comes from files.
#pragma once

#include <functional>

#include "vo_of/of_context_engine.h"

class VO_HOST_EXPORT OfFileReferenceContextEngine : public OfContextEngine
{
public:
    /// `on_reload` is what `reload` calls; it may be empty.
    explicit OfFileReferenceContextEngine(std::function<void()> on_reload = {});
    ~OfFileReferenceContextEngine() override;

    static const CoreClassInfo& class_info();
    const CoreClassInfo& get_class_info() const override { return class_info(); }

    /// Reads the referenced files again.
    virtual void reload();

private:
    std::function<void()> on_reload_;
};
