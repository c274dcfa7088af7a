/// AbcInput: the library's start and end, and the way to the archive manager.
#include "abc_input.h"

#include "abc_input_archive_manager.h"
#include "log_message.h"

void AbcInput::init(AppBase* application)
{
    AbcInputArchiveManager::create(application);
}

void AbcInput::destroy()
{
    AbcInputArchiveManager::destroy();
}

AbcInputArchiveHandle* AbcInput::get_archive(const AbcFileList& filenames)
{
    if (AbcInputArchiveManager* const manager = AbcInputArchiveManager::get())
        return manager->get_archive(filenames, true);
    log_message(log_level_error, [&](CoreLogStream& stream) {
        stream << "Cannot open the Alembic file(s) '" << filenames.join() << "': call AbcInput::init first.\n";
    });
    return new AbcInputArchiveHandle;
}

void AbcInput::release_archive(AbcInputArchiveHandle* handle)
{
    if (AbcInputArchiveManager* const manager = AbcInputArchiveManager::get()) manager->release_archive(handle);
}

bool AbcInput::is_archive_valid(const AbcFileList& filenames)
{
    const AbcInputArchiveManager* const manager = AbcInputArchiveManager::get();
    return manager && manager->is_archive_valid(filenames);
}

void AbcInput::log_statistics()
{
    if (const AbcInputArchiveManager* const manager = AbcInputArchiveManager::get()) manager->log_statistics();
}
