/// What the readers tell about an object without its values: how it moves, over which time, and whether it shows.
#pragma once

#include "archive_session.h"
#include "object_walk.h"
#include "text.h"

#include <abc_visibility_header.h>

#include <cstdint>
#include <string>

struct ObjectDescription
{
    ObjectKind kind = ObjectKind::OTHER;
    bool has_samples = false; ///< the next four are set: geometries, transforms and cameras
    std::int64_t sample_count = 0;
    double start_time = 0.0;        ///< seconds
    double end_time = 0.0;          ///< seconds
    const char* deformation = "";   ///< "constant", "homogeneous" or "heterogeneous" of a geometry; else empty
    AbcVisibilityHeader visibility; ///< with that of the ancestors
    std::string instance_source;
    std::string problem; ///< why the object cannot be read; empty when it can

    bool is_animated() const { return sample_count > 1; }
    /// "homogeneous, 24 samples, 0 s to 1 s, hidden"; may be empty.
    std::string describe() const;
    /// Adds all of it to an object's JSON.
    void add_to(Json& json) const;
};

/// Describes an object of the walk; `parent_visibility` is that of its parent with its ancestors'. An object that
/// cannot be read is described by its problem.
ObjectDescription describe_object(const ArchiveSession& session, const WalkedObject& walked,
                                  const AbcVisibilityHeader& parent_visibility);

/// The visibility of an object with that of all its ancestors.
AbcVisibilityHeader read_inherited_visibility(const Alembic::Abc::IObject& object);

/// "visible", "hidden", "animated" or "undefined".
const char* get_visibility_name(const AbcVisibilityHeader& visibility);
