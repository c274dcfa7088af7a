/// @file
/// The header of a container.
#include "ogawa/container_reader.h"

#include <cstring>
#include <stdexcept>

namespace Alembic::Ogawa {

namespace {

std::unique_ptr<const ByteSource> open_streams(const std::vector<std::istream*>& streams)
{
    auto source = std::make_unique<StreamSource>(streams);
    if (source->size() < header_size) return source; // refused with its reason when the header is read
    char first[header_size];
    char other[header_size];
    source->read_stream(0, 0, first, header_size);
    for (std::size_t i = 1; i < source->stream_count(); ++i) {
        source->read_stream(i, 0, other, header_size);
        if (std::memcmp(first, other, header_size) != 0) throw std::runtime_error("the streams hold different files");
    }
    return source;
}

} // namespace

ContainerReader::ContainerReader(std::unique_ptr<const ByteSource> source)
    : file_(std::move(source))
{
    if (file_.size() == 0) throw std::runtime_error("it is empty");
    unsigned char header[header_size] = {};
    file_.read(0, header, file_.size() < header_size ? static_cast<std::size_t>(file_.size()) : header_size);
    if (std::memcmp(header, magic, sizeof magic) != 0)
        throw std::runtime_error("it does not start as an Ogawa file does");
    if (file_.size() < header_size) throw std::runtime_error("it ends inside its header: was copying it interrupted?");
    const unsigned version = unsigned(header[version_position]) * 256 + header[version_position + 1];
    if (version != container_version)
        throw std::runtime_error("its container version is " + std::to_string(version) + ", only version 1 is known");
    frozen_ = header[frozen_position] == frozen_flag;
    if (!frozen_)
        return; // the root group is written last
    try {
        root_ = GroupReader(file_, file_.read_u64(root_position));
    } catch (const std::runtime_error&) {
        throw std::runtime_error("its root group lies outside the file: was copying it interrupted?");
    }
}

ContainerReader open_container(const std::string& file_name)
{
    return ContainerReader(std::make_unique<FileSource>(file_name));
}

ContainerReader open_container(const std::vector<std::istream*>& streams)
{
    return ContainerReader(open_streams(streams));
}

} // namespace Alembic::Ogawa
