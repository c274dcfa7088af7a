/// Face sets of a mesh as the host's shading groups.
#pragma once

#include "log_message.h"
#include "read_array.h"

#include <Alembic/AbcGeom/All.h>
#include <vo_core/core_array.h>
#include <vo_core/core_string.h>

#include <algorithm>
#include <string>
#include <vector>

/// Sets `group` for each face that `faces` names; numbers that are no face of the mesh are skipped.
void assign_faces(const CoreArray<int>& faces, unsigned int group, CoreArray<unsigned int>& face_groups);

/// One group a face, as an index into the names. Without face sets: one group, "default". Otherwise a group for each
/// face set in the order of their names: later sets win a face, faces in no set stay in the first group. Face sets are
/// read at their first sample; one without samples names its group and holds no faces.
template <class Schema>
void read_shading_groups(Schema schema, const CoreString& object_name, unsigned int face_count,
                         CoreArray<unsigned int>& face_groups, CoreArray<CoreString>& group_names)
{
    face_groups.resize_for_overwrite(face_count);
    face_groups.fill(0);
    std::vector<std::string> names;
    schema.getFaceSetNames(names);
    if (names.empty()) {
        group_names = {CoreString("default")};
        return;
    }
    group_names.resize(names.size());
    CoreArray<int> faces;
    for (unsigned int group = 0; group < names.size(); ++group) {
        group_names[group] = CoreString(names[group]);
        const Alembic::AbcGeom::IFaceSet face_set = schema.getFaceSet(names[group]);
        // Intended: the first sample, whatever the time.
        if (!read_array(face_set.getSchema().getFacesProperty(), 0, faces)) continue;
        if (faces.get_count() > face_count)
            log_message(log_level_warning, [&](CoreLogStream& stream) {
                stream << "The object " << object_name << "'s shading group " << names[group]
                       << " has an incorrect face count: " << faces.get_count() << "/" << face_count << ".\n";
            });
        assign_faces(faces, group, face_groups);
    }
}
