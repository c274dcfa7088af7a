/// Contexts and their engines.
#include "vo_of/of_context.h"

#include <utility>

#include "vo_of/of_file_reference_context_engine.h"

const CoreClassInfo& OfContextEngine::class_info()
{
    static const CoreClassInfo info("OfContextEngine", &CoreBaseObject::class_info());
    return info;
}

OfFileReferenceContextEngine::OfFileReferenceContextEngine(std::function<void()> on_reload)
    : on_reload_(std::move(on_reload))
{
}

OfFileReferenceContextEngine::~OfFileReferenceContextEngine() = default;

const CoreClassInfo& OfFileReferenceContextEngine::class_info()
{
    static const CoreClassInfo info("OfFileReferenceContextEngine", &OfContextEngine::class_info());
    return info;
}

void OfFileReferenceContextEngine::reload()
{
    if (on_reload_) on_reload_();
}

OfContext::OfContext(const CoreString& name, std::unique_ptr<OfContextEngine> engine)
    : name_(name)
    , engine_(std::move(engine))
{
}

OfContext::~OfContext() = default;

const CoreClassInfo& OfContext::class_info()
{
    static const CoreClassInfo info("OfContext", &CoreBaseObject::class_info());
    return info;
}
