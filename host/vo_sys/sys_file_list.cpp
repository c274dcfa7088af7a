/// Ordered list of files: names, validity, modification stamps.
#include "vo_sys/sys_file_list.h"

#include <cerrno>
#include <cstring>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "vo_core/core_hash.h"

namespace {

// ASCII only: the result must not depend on the locale.
bool equal_in_any_case(std::string_view a, std::string_view b)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (lower(a[i]) != lower(b[i])) return false;
    return true;
}

bool has_extension(std::string_view file, const CoreArray<CoreString>& extensions)
{
    if (extensions.is_empty()) return true;
    const std::string_view name = file.substr(file.find_last_of('/') + 1);
    const std::size_t dot = name.find_last_of('.');
    if (dot == name.npos) return false;
    for (const CoreString& extension : extensions)
        if (equal_in_any_case(name.substr(dot + 1), extension.get_view())) return true;
    return false;
}

std::string describe_extensions(const CoreArray<CoreString>& extensions)
{
    std::string text;
    for (const CoreString& extension : extensions)
        text += (text.empty() ? "\"" : " or \"") + std::string(extension.get_view()) + "\"";
    return text;
}

std::string system_message(int error)
{
    return std::generic_category().message(error);
}

// Empty when the file can be used.
std::string find_problem(const CoreString& file, const CoreArray<CoreString>& extensions)
{
    const std::string quoted = "'" + std::string(file.get_view()) + "' ";
    if (file.is_empty()) return "a file name is empty";
    if (file.get_view().find('\0') != std::string_view::npos) return quoted + "has a zero byte in its name";
    if (!has_extension(file.get_view(), extensions))
        return quoted + "has not the extension " + describe_extensions(extensions);
    struct stat status;
    if (stat(file.get_data(), &status) != 0)
        return errno == ENOENT ? quoted + "does not exist" : quoted + "cannot be reached: " + system_message(errno);
    if (!S_ISREG(status.st_mode)) return quoted + "is not a regular file";
    if (faccessat(AT_FDCWD, file.get_data(), R_OK, AT_EACCESS) != 0)
        return quoted + "cannot be read: " + system_message(errno);
    return std::string();
}

CoreLong modification_stamp(const CoreString& file)
{
    struct stat status;
    if (stat(file.get_data(), &status) != 0) return 0;
    const std::int64_t state[] = {status.st_mtim.tv_sec, status.st_mtim.tv_nsec,
                                  static_cast<std::int64_t>(status.st_size), static_cast<std::int64_t>(status.st_ino)};
    const unsigned int hash = CoreHash::generate_jenkins(state, sizeof(state));
    CoreLong stamp = 0;
    std::memcpy(&stamp, &hash, sizeof(stamp));
    return stamp == 0 ? 1 : stamp; // 0 is the stamp of a missing file alone
}

unsigned long long get_strings_size(const CoreArray<CoreString>& strings)
{
    unsigned long long size = strings.get_memory_size() - sizeof(strings);
    for (const CoreString& string : strings)
        size += string.get_size() + 1;
    return size;
}

} // namespace

SysFileList::SysFileList(const CoreBasicArray<CoreString>& extensions)
    : extensions_(extensions)
{
}

SysFileList::SysFileList(const CoreString& file, const CoreBasicArray<CoreString>& extensions)
    : files_({file})
    , extensions_(extensions)
{
}

SysFileList::SysFileList(const CoreBasicArray<CoreString>& files, const CoreBasicArray<CoreString>& extensions)
    : files_(files)
    , extensions_(extensions)
{
}

SysFileList::~SysFileList() = default;

void SysFileList::clear()
{
    clear_files();
}

unsigned long long SysFileList::get_memory_size() const
{
    return sizeof(*this) + get_strings_size(files_) + get_strings_size(extensions_);
}

void SysFileList::clear_files()
{
    files_.clear();
}

void SysFileList::add(const CoreString& file)
{
    const CoreString copy = file; // it may be one of ours, which the resize moves
    files_.resize(std::size_t(files_.get_count()) + 1);
    files_[files_.get_count() - 1] = copy;
}

bool SysFileList::is_valid() const
{
    for (const CoreString& file : files_)
        if (!find_problem(file, extensions_).empty()) return false;
    return !files_.is_empty();
}

CoreString SysFileList::get_errors(char separator) const
{
    if (files_.is_empty()) return "the list names no file";
    CoreString errors;
    for (const CoreString& file : files_) {
        const std::string problem = find_problem(file, extensions_);
        if (problem.empty()) continue;
        if (!errors.is_empty()) errors += separator;
        errors += problem;
    }
    return errors;
}

CoreString SysFileList::join(const CoreBasicArray<CoreString>& separators) const
{
    static const CoreString comma = ", ";
    CoreString text;
    for (unsigned int i = 0; i < files_.get_count(); ++i) {
        const unsigned int last = separators.get_count() - 1; // unused when there are none
        if (i > 0) text += separators.is_empty() ? comma : separators[std::min(i - 1, last)];
        text += files_[i];
    }
    return text;
}

CoreArray<CoreLong> SysFileList::get_modification_times() const
{
    CoreArray<CoreLong> times(files_.get_count());
    for (unsigned int i = 0; i < files_.get_count(); ++i)
        times[i] = modification_stamp(files_[i]);
    return times;
}

bool SysFileList::modification_times_equal_to(const CoreBasicArray<CoreLong>& times) const
{
    if (times.get_count() != files_.get_count()) return false;
    for (unsigned int i = 0; i < files_.get_count(); ++i)
        if (modification_stamp(files_[i]) != times[i]) return false;
    return true;
}
