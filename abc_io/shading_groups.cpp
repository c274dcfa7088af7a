/// Faces into shading groups.
#include "shading_groups.h"

void assign_faces(const CoreArray<int>& faces, unsigned int group, CoreArray<unsigned int>& face_groups)
{
    const unsigned int face_count = face_groups.get_count();
    for (const int face : faces)
        if (static_cast<unsigned int>(face) < face_count) face_groups[static_cast<unsigned int>(face)] = group;
}
