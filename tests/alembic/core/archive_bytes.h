/// @file
/// Builds Ogawa archives byte by byte, sound ones and others, and describes what a reader makes of them.
#pragma once

#include "support/container_bytes.h"

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include <sstream>
#include <string>
#include <vector>

namespace vo_test {

namespace AbcA = Alembic::AbcCoreAbstract;

/// The six children of a root group; what a test does not change is sound.
struct ArchiveBytes
{
    ContainerBytes blocks;
    std::string file_version = bytes_of(std::int32_t(0));
    std::string library_version = bytes_of(std::int32_t(10812));
    std::string metadata = "a=b";
    std::string time_samplings = bytes_of(std::uint32_t(1), 1.0, std::uint32_t(1), 0.0);
    std::string metadata_table = std::string("\x1c", 1) + "interpretation=vector;x=y;zz";

    std::string finish(std::uint64_t top)
    {
        const std::uint64_t root =
            blocks.group({blocks.data(file_version), blocks.data(library_version), top, blocks.data(metadata),
                          blocks.data(time_samplings), blocks.data(metadata_table)});
        return blocks.finish(root);
    }

    /// An object's group: its compound, its children, their headers, two hashes.
    std::uint64_t object(std::uint64_t compound, std::vector<std::uint64_t> children, const std::string& headers)
    {
        children.insert(children.begin(), compound);
        children.push_back(blocks.data(headers + std::string(16, 'p') + std::string(16, 'c')));
        return blocks.group(children);
    }

    /// A compound's group: its properties and their headers.
    std::uint64_t compound(std::vector<std::uint64_t> properties, const std::string& headers)
    {
        properties.push_back(blocks.data(headers));
        return blocks.group(properties);
    }

    /// A sample: a digest, then the values.
    std::uint64_t sample(const std::string& values) { return blocks.data(std::string(16, 'd') + values); }
};

inline std::string object_header(const std::string& name, unsigned char metadata_index = 0)
{
    return bytes_of(std::uint32_t(name.size())) + name + static_cast<char>(metadata_index);
}

// The info word of property headers with numbers of one byte.
constexpr std::uint32_t scalar = 1, array = 2, scalar_like = 3, constant = 0x800, changed_range = 0x200,
                        with_time = 0x100;
constexpr std::uint32_t pod(std::uint32_t number)
{
    return number << 4;
}
constexpr std::uint32_t extent(std::uint32_t count)
{
    return count << 12;
}
constexpr std::uint32_t metadata(std::uint32_t index)
{
    return index << 20;
}
constexpr std::uint32_t int_scalar = scalar | pod(AbcA::kInt32POD) | extent(1);
constexpr std::uint32_t float_array = array | pod(AbcA::kFloat32POD) | extent(1);

/// A property header with numbers of one byte: `numbers` stand before the name.
inline std::string property_header(std::uint32_t info, const std::vector<int>& numbers, const std::string& name)
{
    std::string header = bytes_of(info);
    for (const int number : numbers)
        header += static_cast<char>(number);
    return header + static_cast<char>(name.size()) + name;
}

/// An archive whose top has these properties.
inline std::string with_properties(const std::vector<std::uint64_t>& groups, const std::string& headers,
                                   ArchiveBytes& archive)
{
    const std::uint64_t top = archive.object(archive.compound(groups, headers), {}, "");
    return archive.finish(top);
}

/// Opens bytes as a stream that lives as long as the archive is used by the caller.
struct OpenBytes
{
    explicit OpenBytes(const std::string& bytes)
        : stream(bytes)
        , archive(Alembic::AbcCoreOgawa::ReadArchive({&stream})("bytes"))
    {
    }
    AbcA::CompoundPropertyReaderPtr properties() const { return archive->getTop()->getProperties(); }

    std::istringstream stream;
    AbcA::ArchiveReaderPtr archive;
};

/// The first line of what `act` throws, "" when it does not.
template <class Act>
std::string error_of(const Act& act)
{
    try {
        act();
    } catch (const std::exception& error) {
        const std::string text = error.what();
        return text.substr(0, text.find('\n'));
    }
    return "";
}

/// All that can be read below an object as text; what cannot be read stands as its error.
std::string describe(const AbcA::ObjectReaderPtr& object);

} // namespace vo_test
