/// NewFile: a file that takes its name only when it is complete.
#pragma once

#include <string>

/// Makes an empty file of another name beside `path`; it takes that name on `commit`. Without it nothing remains, and a
/// file that was there before stays as it is. One that is replaced leaves its access rights; a link is followed. A link
/// that leads nowhere, what is no plain file and what may not be written is refused. Every failure throws ToolError.
class NewFile
{
public:
    explicit NewFile(const std::string& path);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// The name to write to until then.
    const std::string& get_temporary_path() const { return temporary_path_; }
    /// The open file; it stays this object's.
    int get_descriptor() const { return descriptor_; }

    /// What was written goes to the disk, and the file takes its name.
    void commit();

    /// Throws that the file cannot be written, and why.
    [[noreturn]] void fail(int error_number) const;

private:
    std::string path_, temporary_path_;
    int descriptor_ = -1;
    bool is_committed_ = false;
};
