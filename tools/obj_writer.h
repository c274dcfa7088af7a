/// ObjWriter: meshes and curves as an OBJ file.
#pragma once

#include "finite_numbers.h"
#include "output_file.h"
#include "scene_geometry.h"

#include <cstdint>
#include <string>

/// Adds objects to an OBJ file one after another. Indices are 1-based and count over the whole file, as OBJ wants them.
class ObjWriter
{
public:
    explicit ObjWriter(OutputFile& file)
        : file_(file)
    {
    }

    /// A line of comment.
    void add_comment(const std::string& text);
    /// Points, the first UV map, normals, and faces under the names of their shading groups ("g" and "usemtl"). Faces
    /// of fewer than three corners are left out and counted.
    void add_mesh(const std::string& path, const MeshGeometry& mesh);
    /// Each curve as a line through its control points; one that is closed returns to its first, once.
    void add_curves(const std::string& path, const CurvesGeometry& geometry);

    std::uint64_t get_face_count() const { return face_count_; }
    std::uint64_t get_line_count() const { return line_count_; }
    std::uint64_t get_skipped_count() const { return skipped_count_; } ///< faces and curves of too few points
    /// Coordinates that are not finite, written as 0.
    std::uint64_t get_bad_number_count() const { return numbers_.get_bad_count(); }

private:
    void add_object(const std::string& path);
    void add_vectors(const char* keyword, const CoreArray<GMathVec3<float>>& vectors);
    void add_group(const CoreString& name);
    void add_faces(const MeshGeometry& mesh, const GeometryUvMap* uvs, const GeometryNormalMap* normals);

    OutputFile& file_;
    std::uint64_t position_count_ = 0, uv_count_ = 0, normal_count_ = 0; ///< of all objects before
    std::uint64_t face_count_ = 0, line_count_ = 0, skipped_count_ = 0;
    FiniteNumbers numbers_;
};
