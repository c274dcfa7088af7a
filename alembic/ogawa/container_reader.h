/// @file
/// An open container: its header checked, its root group at hand.
#pragma once

#include "ogawa/group_reader.h"

namespace Alembic::Ogawa {

/// A container opened for reading. Any number of threads may read through it at once.
class ContainerReader
{
public:
    /// Checks the header. Throws std::runtime_error with the reason, in the reader's words ("it is empty"), when the
    /// source is not a container of the known version.
    explicit ContainerReader(std::unique_ptr<const ByteSource> source);

    ContainerReader(const ContainerReader&) = delete; // groups and data refer to its file
    ContainerReader& operator=(const ContainerReader&) = delete;

    const BlockBuffer& file() const { return file_; }

    /// False: the file is still being written, or its writer never finished it.
    bool is_frozen() const { return frozen_; }

    /// The root group; empty while the file is being written.
    const GroupReader& root() const { return root_; }

private:
    BlockBuffer file_;
    bool frozen_ = false;
    GroupReader root_;
};

/// A file. Throws std::runtime_error with the reason when it cannot be read or is no container.
ContainerReader open_container(const std::string& file_name);

/// Streams that hold copies of one container. Throws as above, also when the headers of the streams differ.
ContainerReader open_container(const std::vector<std::istream*>& streams);

} // namespace Alembic::Ogawa
