/// AbcFileList: names in the order Alembic wants them, and the hash of the archive cache.
#include "abc_file_list.h"

#include <vo_core/core_hash.h>

namespace {

std::uint32_t rotate_left(std::uint32_t value, int bits)
{
    return (value << bits) | (value >> (32 - bits));
}

} // namespace

const CoreArray<CoreString> AbcFileList::extension = {CoreString("abc")};

AbcFileList::AbcFileList()
    : SysFileList(extension)
{
}

AbcFileList::AbcFileList(const CoreString& filename)
    : SysFileList(filename, extension)
{
}

AbcFileList::AbcFileList(const CoreBasicArray<CoreString>& filenames)
    : SysFileList(filenames, extension)
{
}

void AbcFileList::clear()
{
    clear_files();
}

std::vector<std::string> AbcFileList::get_as_reversed_vector() const
{
    std::vector<std::string> names;
    names.reserve(get_count());
    for (unsigned int i = get_count(); i-- > 0;)
        names.emplace_back(get_file(i).get_data());
    return names;
}

std::uint32_t AbcFileList::get_hash() const
{
    // MurmurHash3's 32-bit block step over the names' hashes; by intention without its length mixing and finalisation.
    std::uint32_t hash = 0;
    for (const CoreString& name : get_files()) {
        std::uint32_t block = CoreHash::generate_jenkins(name.get_data(), name.get_count()) * 0xcc9e2d51u;
        block = rotate_left(block, 15) * 0x1b873593u;
        hash = rotate_left(hash ^ block, 13) * 5 + 0xe6546b64u;
    }
    return hash;
}
