/// AbcFileList: the ordered files that together form one input archive.
#pragma once

#include "vo_abc_io_export.h"

#include <vo_core/core_array.h>
#include <vo_core/core_hash_traits.h>
#include <vo_core/core_string.h>
#include <vo_sys/sys_file_list.h>

#include <cstdint>
#include <string>
#include <vector>

/// The ordered names of the files of one input archive: one file is a plain archive, several are the layers of a
/// layered one. The order is the host's layer order and is kept as given: the same files in another order are another
/// archive. Names, validity and modification times are SysFileList's; the only accepted extension is "abc".
class VO_ABC_IO_EXPORT AbcFileList : public SysFileList
{
public:
    /// The accepted extensions: exactly one, "abc" (no leading dot).
    static const CoreArray<CoreString> extension;

    /// An empty list.
    AbcFileList();
    /// A plain archive in one file.
    AbcFileList(const CoreString& filename);
    /// The layers of an archive, in the host's order.
    AbcFileList(const CoreBasicArray<CoreString>& filenames);
    AbcFileList(const AbcFileList& other) = default;
    AbcFileList(AbcFileList&& other) = default;
    AbcFileList& operator=(const AbcFileList& other) = default;
    AbcFileList& operator=(AbcFileList&& other) = default;
    ~AbcFileList() = default;

    /// Removes all names; the accepted extensions stay.
    void clear() override;

    /// The names, last one first: the order in which Alembic's factory wants layers (strongest first), which is the
    /// opposite of the host's. Empty for an empty list.
    std::vector<std::string> get_as_reversed_vector() const;

    /// 32-bit hash over the names in list order, the one the archive cache uses: equal lists have equal hashes.
    std::uint32_t get_hash() const;
};

/// The archive cache's key: equal lists are equal archives.
template <>
struct CoreHashTraits<AbcFileList>
{
    static unsigned int hash(const AbcFileList& key) { return key.get_hash(); }
    static bool equal(const AbcFileList& a, const AbcFileList& b) { return a == b; }
};
