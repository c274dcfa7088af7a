#include "obj_writer.h"

#include "closed_curves.h"
#include "text.h"

namespace {

/// OBJ separates names by blanks: a name must be one word.
std::string one_word(std::string_view name)
{
    std::string word = printable(name);
    for (char& character : word)
        if (character == ' ') character = '_';
    return word.empty() ? "unnamed" : word;
}

} // namespace

void ObjWriter::add_comment(const std::string& text)
{
    file_.print(FMT_COMPILE("# {}\n"), printable(text));
}

void ObjWriter::add_mesh(const std::string& path, const MeshGeometry& mesh)
{
    const GeometryUvMap* const uvs = mesh.uv_maps.is_empty() ? nullptr : &mesh.uv_maps[0];
    const GeometryNormalMap* const normals = mesh.normal_maps.is_empty() ? nullptr : &mesh.normal_maps[0];
    add_object(path);
    add_vectors("v", mesh.positions);
    if (uvs)
        for (const GMathVec3<float>& uv : uvs->values)
            file_.print(FMT_COMPILE("vt {} {}\n"), numbers_.take(uv.x), numbers_.take(uv.y));
    if (normals) add_vectors("vn", normals->values);
    add_faces(mesh, uvs, normals);
    position_count_ += mesh.positions.get_count();
    if (uvs) uv_count_ += uvs->values.get_count();
    if (normals) normal_count_ += normals->values.get_count();
}

void ObjWriter::add_curves(const std::string& path, const CurvesGeometry& geometry)
{
    const AbcCurveHeader& curves = geometry.curves;
    const bool is_periodic = curves.periodicity_type == AbcCurveHeader::PERIODICITY_TYPE_PERIODIC;
    add_object(path);
    add_vectors("v", curves.positions);
    unsigned int first_point = 0;
    for (const unsigned int count : curves.vertex_counts) {
        const std::uint64_t first = position_count_ + 1 + first_point;
        if (count < 2) {
            ++skipped_count_;
        } else {
            const unsigned int own_count = count_own_points(curves, curves.positions, first_point, count);
            file_.write("l");
            for (unsigned int i = 0; i < own_count; ++i)
                file_.print(FMT_COMPILE(" {}"), first + i);
            if (is_periodic) file_.print(FMT_COMPILE(" {}"), first);
            file_.write("\n");
            ++line_count_;
        }
        first_point += count;
    }
    position_count_ += curves.positions.get_count();
}

void ObjWriter::add_object(const std::string& path)
{
    file_.print(FMT_COMPILE("o {}\n"), one_word(path));
}

void ObjWriter::add_vectors(const char* keyword, const CoreArray<GMathVec3<float>>& vectors)
{
    for (const GMathVec3<float>& vector : vectors)
        file_.print(FMT_COMPILE("{} {} {} {}\n"), keyword, numbers_.take(vector.x), numbers_.take(vector.y),
                    numbers_.take(vector.z));
}

void ObjWriter::add_group(const CoreString& name)
{
    const std::string word = one_word(name.get_view());
    file_.print(FMT_COMPILE("g {}\nusemtl {}\n"), word, word);
}

void ObjWriter::add_faces(const MeshGeometry& mesh, const GeometryUvMap* uvs, const GeometryNormalMap* normals)
{
    const std::uint64_t position = position_count_ + 1, uv = uv_count_ + 1, normal = normal_count_ + 1;
    std::size_t corner = 0;
    const unsigned int* group = nullptr;
    for (unsigned int face = 0; face < mesh.face_counts.get_count(); ++face) {
        const std::size_t end = corner + mesh.face_counts[face];
        if (end - corner < 3) {
            ++skipped_count_;
            corner = end;
            continue;
        }
        const unsigned int& face_group = mesh.face_groups[face];
        if (!group || *group != face_group) add_group(mesh.group_names[face_group]);
        group = &face_group;
        file_.write("f");
        for (; corner < end; ++corner) {
            file_.print(FMT_COMPILE(" {}"), position + mesh.face_indices[corner]);
            if (uvs) file_.print(FMT_COMPILE("/{}"), uv + uvs->indices[corner]);
            if (normals) file_.print(FMT_COMPILE("{}{}"), uvs ? "/" : "//", normal + normals->indices[corner]);
        }
        file_.write("\n");
        ++face_count_;
    }
}
