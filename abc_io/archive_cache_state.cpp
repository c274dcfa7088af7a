/// Which cached archives changed on disk, and the offer to resync them.
#include "abc_input_archive_manager.h"
#include "cached_archive.h"

#include <vo_app_base/app_base.h>
#include <vo_app_base/app_dialog.h>
#include <vo_core/core_set.h>
#include <vo_of/of_attr.h>
#include <vo_of/of_context.h>
#include <vo_of/of_file_reference_context_engine.h>

#include <algorithm>

namespace {

CoreString resync_question(const CoreArray<AbcFileList>& lists)
{
    CoreString text = "The following Alembic file(s) need to be resynced:\n\n";
    for (const AbcFileList& list : lists) {
        if (list.get_count() <= 1) {
            text += list.join() + "\n";
            continue;
        }
        text += "Layered archive:\n";
        for (const CoreString& name : list.get_files())
            text += CoreString("    - ") + name + "\n";
    }
    text += "\nWould you like to resync them?";
    return text;
}

/// The engine that loads the file an attribute names, if that is one of `names`; null otherwise.
OfFileReferenceContextEngine* find_engine_to_reload(const OfAttr& attr, const CoreSet<CoreString>& names)
{
    const OfAttr::VisualHint hint = attr.get_visual_hint();
    if (hint != OfAttr::VISUAL_HINT_FILE_OPEN && hint != OfAttr::VISUAL_HINT_FILE_SAVE) return nullptr;
    if (attr.is_hidden()) return nullptr;
    if (!names.contains(attr.get_string(0, OfAttr::VALUE_PAGE_CURRENT, true))) return nullptr;
    OfContext* const context = attr.get_context();
    OfContextEngine* const engine = context ? context->get_engine() : nullptr;
    if (!engine || !engine->is_kindof(OfFileReferenceContextEngine::class_info())) return nullptr;
    return static_cast<OfFileReferenceContextEngine*>(engine);
}

} // namespace

bool AbcInputArchiveManager::is_cached_archive_up_to_date(const AbcFileList& filenames) const
{
    const auto snapshot = get_snapshot();
    const auto found = std::find_if(snapshot->archives.begin(), snapshot->archives.end(),
                                    [&](const CachedArchivePtr& cached) { return cached->filenames == filenames; });
    return found != snapshot->archives.end() && (*found)->is_up_to_date();
}

CoreArray<AbcFileList> AbcInputArchiveManager::get_invalid_cache_archives()
{
    CoreArray<AbcFileList> invalid;
    const auto snapshot = get_snapshot();
    for (const CachedArchivePtr& cached : snapshot->archives) {
        if (cached->is_up_to_date()) continue;
        invalid.resize(invalid.get_count() + std::size_t(1));
        invalid[invalid.get_count() - 1] = cached->filenames;
    }
    return invalid;
}

bool AbcInputArchiveManager::check_archive_cache_state(bool interactive)
{
    CoreArray<AbcFileList> invalid = s_abc_manager->get_invalid_cache_archives();
    if (invalid.is_empty()) return true;
    AppBase* const application = s_abc_manager->get_application();
    if (!interactive || !application) return false;
    const AppDialog answer =
        application->show_question_dialog(resync_question(invalid), "Alembic Resync", AppDialog::yes(),
                                          AppBase::DIALOG_STYLE_QUESTION, CoreArray<CoreString>());
    if (!answer.is_yes()) return false;
    s_abc_manager->reload_resources(invalid);
    return true;
}

void AbcInputArchiveManager::reload_resources(CoreArray<AbcFileList>& filenames)
{
    CoreSet<CoreString> names;
    for (const AbcFileList& list : filenames)
        for (const CoreString& name : list.get_files())
            names.insert(name);

    // A reload may destroy attributes of the items it replaces: those that are gone are not asked any more.
    const CoreSet<OfAttr*> attrs = OfAttr::get_path_attrs();
    CoreSet<OfAttr*> alive = attrs;
    for (OfAttr* const attr : attrs) {
        if (!alive.contains(attr)) continue;
        OfFileReferenceContextEngine* const engine = find_engine_to_reload(*attr, names);
        if (!engine) continue;
        engine->reload();
        alive = OfAttr::get_path_attrs();
    }
}
