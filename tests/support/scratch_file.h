/// @file
/// A file name in a folder of its own that goes with the object, and the file's bytes.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

class ScratchFile
{
public:
    explicit ScratchFile(const std::string& name)
    {
        std::string folder = (std::filesystem::temp_directory_path() / "scratch.XXXXXX").string();
        if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no scratch folder can be made: " + folder);
        folder_ = folder;
        path_ = (folder_ / name).string();
    }
    ~ScratchFile()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string& path() const { return path_; }
    std::string folder() const { return folder_.string(); }

    std::string bytes() const
    {
        std::ifstream file(path_, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

private:
    std::filesystem::path folder_;
    std::string path_;
};
