/// Runs the tool as a user would, and reads the files it writes.
#pragma once

#include <support/scratch_file.h>

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

/// What a run of the tool left behind.
struct ToolRun
{
    int status = -1; ///< exit status; 128 and above: it crashed
    std::string output, errors;
};

inline std::string read_file(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

inline void write_file(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Runs `vo_abc arguments...`, its output and messages going to files.
inline ToolRun run_tool(const std::vector<std::string>& arguments)
{
    const ScratchFile output("output"), errors("errors");
    // What a sanitizer finds must not pass as bad input.
    std::string command =
        "ASAN_OPTIONS=exitcode=99:$ASAN_OPTIONS UBSAN_OPTIONS=halt_on_error=1:exitcode=99:$UBSAN_OPTIONS ";
    command += VO_ABC_TOOL;
    for (const std::string& argument : arguments) {
        command += " '";
        for (const char character : argument)
            command += character == '\'' ? std::string("'\\''") : std::string(1, character);
        command += "'";
    }
    const int status = std::system((command + " >" + output.path() + " 2>" + errors.path()).c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128, output.bytes(), errors.bytes()};
}

/// One corner of a face: 1-based numbers as the file has them, 0 for none.
using ObjCorner = std::array<std::uint64_t, 3>;

struct ObjFace
{
    std::string object, group, material;
    std::vector<ObjCorner> corners;
};

/// An OBJ file, read by rules of its own.
struct ObjFile
{
    std::vector<std::array<double, 3>> positions, normals;
    std::vector<std::array<double, 2>> uvs;
    std::vector<ObjFace> faces;
    std::vector<std::vector<std::uint64_t>> lines;
    std::vector<std::string> objects;

    explicit ObjFile(const std::string& path)
    {
        std::ifstream file(path);
        EXPECT_TRUE(file.is_open()) << path;
        std::string text;
        ObjFace context;
        while (std::getline(file, text))
            add_line(text, context);
    }

private:
    void add_line(const std::string& text, ObjFace& context)
    {
        std::istringstream words(text);
        std::string keyword;
        words >> keyword;
        std::array<double, 3> vector{};
        if (keyword == "v" || keyword == "vn") {
            words >> vector[0] >> vector[1] >> vector[2];
            (keyword == "v" ? positions : normals).push_back(vector);
        } else if (keyword == "vt") {
            words >> vector[0] >> vector[1];
            uvs.push_back({vector[0], vector[1]});
        } else if (keyword == "o") {
            words >> context.object;
            objects.push_back(context.object);
        } else if (keyword == "g") {
            words >> context.group;
        } else if (keyword == "usemtl") {
            words >> context.material;
        } else if (keyword == "f") {
            ObjFace face = context;
            for (std::string corner; words >> corner;)
                face.corners.push_back(parse_corner(corner));
            faces.push_back(face);
        } else if (keyword == "l") {
            lines.emplace_back(std::istream_iterator<std::uint64_t>(words), std::istream_iterator<std::uint64_t>());
            return; // read to its end
        } else {
            EXPECT_EQ(keyword, "#") << text;
            return;
        }
        std::string rest;
        words.clear();
        EXPECT_FALSE(words >> rest) << text;
    }

    static ObjCorner parse_corner(const std::string& text)
    {
        ObjCorner corner{};
        std::istringstream parts(text);
        std::string part;
        for (std::size_t i = 0; i < 3 && std::getline(parts, part, '/'); ++i)
            corner[i] = part.empty() ? 0 : std::stoull(part);
        return corner;
    }
};
