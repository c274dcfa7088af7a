/// Ordered list of files that are used together.
#pragma once

#include "vo_core/core_array.h"
#include "vo_core/core_string.h"
#include "vo_core/core_types.h"

/// File names in the order given, and the extensions they must have. Only names are kept: every question about the
/// files themselves is answered from the disk when it is asked. Not locked; several threads may read at once.
class VO_HOST_EXPORT SysFileList
{
public:
    SysFileList() = default;
    /// `extensions` without a leading dot, compared in any case; an empty array accepts every name.
    explicit SysFileList(const CoreBasicArray<CoreString>& extensions);
    SysFileList(const CoreString& file, const CoreBasicArray<CoreString>& extensions);
    SysFileList(const CoreBasicArray<CoreString>& files, const CoreBasicArray<CoreString>& extensions);
    SysFileList(const SysFileList&) = default;
    SysFileList(SysFileList&&) noexcept = default;
    SysFileList& operator=(const SysFileList&) = default;
    SysFileList& operator=(SysFileList&&) noexcept = default;

    /// Removes all names; the extensions stay.
    virtual void clear();
    /// Bytes of this object and of everything it owns.
    virtual unsigned long long get_memory_size() const;
    virtual ~SysFileList();

    void clear_files();
    void add(const CoreString& file);

    unsigned int get_count() const { return files_.get_count(); }
    bool is_empty() const { return files_.is_empty(); }
    /// `index` below `get_count()`.
    const CoreString& get_file(unsigned int index) const { return files_[index]; }
    const CoreArray<CoreString>& get_files() const { return files_; }
    const CoreArray<CoreString>& get_extensions() const { return extensions_; }

    /// True when there is at least one file and every one has an accepted extension, exists, is a regular file (or a
    /// link to one) and may be read.
    bool is_valid() const;
    /// Why the list is not valid, one problem per file, joined by `separator`; empty when it is valid.
    CoreString get_errors(char separator) const;

    /// The names in one printable text. `separators[i]` stands between name i and name i + 1, the last one between all
    /// names that follow; without separators it is ", ".
    CoreString join(const CoreBasicArray<CoreString>& separators = CoreArray<CoreString>()) const;

    /// A stamp for each file: another number as soon as the file's modification time (to the nanosecond), size or
    /// identity (inode) is another one, so that a file rewritten within a second is noticed. Not a time. 0 for a file
    /// that cannot be found. Two different states share a stamp by chance once in 2^32.
    CoreArray<CoreLong> get_modification_times() const;
    /// Whether the stamps of the files, as they are now, are these.
    bool modification_times_equal_to(const CoreBasicArray<CoreLong>& times) const;

    /// Same names in the same order; extensions do not matter.
    bool operator==(const SysFileList& other) const { return files_ == other.files_; }
    bool operator!=(const SysFileList& other) const { return !(*this == other); }

private:
    CoreArray<CoreString> files_;
    CoreArray<CoreString> extensions_;
};
