/// AbcVisibilityHeader: what an object's visibility property says, in short.
#pragma once

#include "vo_abc_io_export.h"

#include <vo_core/core_array.h>

#include <cstdint>

/// An object's visibility, classified once. A host that wants to know what an object's ancestors make of it folds their
/// headers into it, the nearest first, up to and with the archive's top object.
class VO_ABC_IO_EXPORT AbcVisibilityHeader
{
public:
    enum VisibilityType : std::int32_t {
        VISIBILITY_TYPE_UNDEFINED = 0,        ///< no visibility property, or one sample that is neither 0 nor 1
        VISIBILITY_TYPE_ANIMATED = 1,         ///< two or more samples, whatever their values
        VISIBILITY_TYPE_CONSTANT_HIDDEN = 2,  ///< one sample, 0
        VISIBILITY_TYPE_CONSTANT_VISIBLE = 3, ///< one sample, 1
        VISIBILITY_TYPE_COUNT = 4,            ///< number of types; no reader yields it
    };

    /// The enumerator's own name; "VISIBILITY_TYPE_UNKNOWN" for any other value.
    static const char* get_visibility_type_name(const VisibilityType& type);

    /// Undefined, range 0 to 0.
    AbcVisibilityHeader();
    /// Classifies the visibility property of `object`, an Alembic::Abc::IObject. Undefined, range 0 to 0, when the
    /// object is null or invalid, or its property is missing, of another type or without samples. Alembic's exceptions
    /// pass. The caller holds the archive's lock, if it has one.
    explicit AbcVisibilityHeader(void* object);

    /// Folds the parent's header into this one. An undefined header takes the parent's, and everything under a
    /// constantly hidden parent is constantly hidden; an animated one widens its range by the parent's; a constantly
    /// visible one under an animated parent becomes animated. Otherwise nothing changes.
    void inherit_parent_visibility_header(const AbcVisibilityHeader& parent);

    bool is_undefined() const { return type == VISIBILITY_TYPE_UNDEFINED; }
    bool is_animated() const { return type == VISIBILITY_TYPE_ANIMATED; }
    bool is_constant_hidden() const { return type == VISIBILITY_TYPE_CONSTANT_HIDDEN; }
    bool is_constant_visible() const { return type == VISIBILITY_TYPE_CONSTANT_VISIBLE; }
    bool is_undefined_or_constant() const { return !is_animated(); }
    /// Whether an object that is not animated is visible: undefined counts as visible.
    bool get_constant_visibility() const { return is_undefined() || is_constant_visible(); }

    VisibilityType type = VISIBILITY_TYPE_UNDEFINED;
    CoreArray<double> time_range; ///< 2 values, seconds: the first and the last sample of the visibility property
};
