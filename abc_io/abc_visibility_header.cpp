/// AbcVisibilityHeader: classifying an object's visibility property, folding headers.
#include "abc_visibility_header.h"

#include <Alembic/AbcGeom/All.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

using namespace Alembic::AbcGeom;

namespace {

AbcVisibilityHeader::VisibilityType constant_type(std::int8_t value)
{
    switch (value) {
    case kVisibilityHidden:
        return AbcVisibilityHeader::VISIBILITY_TYPE_CONSTANT_HIDDEN;
    case kVisibilityVisible:
        return AbcVisibilityHeader::VISIBILITY_TYPE_CONSTANT_VISIBLE;
    default:
        return AbcVisibilityHeader::VISIBILITY_TYPE_UNDEFINED; // -1 leaves it to the parent
    }
}

/// Invalid when the object has no such property, or one of another type, which Alembic refuses to open.
IVisibilityProperty find_visibility(IObject& object)
{
    const AbcA::PropertyHeader* const header = object.getProperties().getPropertyHeader(kVisibilityPropertyName);
    return header && IVisibilityProperty::matches(*header) ? GetVisibilityProperty(object) : IVisibilityProperty();
}

} // namespace

const char* AbcVisibilityHeader::get_visibility_type_name(const VisibilityType& type)
{
    switch (type) {
    case VISIBILITY_TYPE_UNDEFINED:
        return "VISIBILITY_TYPE_UNDEFINED";
    case VISIBILITY_TYPE_ANIMATED:
        return "VISIBILITY_TYPE_ANIMATED";
    case VISIBILITY_TYPE_CONSTANT_HIDDEN:
        return "VISIBILITY_TYPE_CONSTANT_HIDDEN";
    case VISIBILITY_TYPE_CONSTANT_VISIBLE:
        return "VISIBILITY_TYPE_CONSTANT_VISIBLE";
    case VISIBILITY_TYPE_COUNT:
        return "VISIBILITY_TYPE_COUNT";
    }
    return "VISIBILITY_TYPE_UNKNOWN";
}

AbcVisibilityHeader::AbcVisibilityHeader()
    : time_range{0.0, 0.0}
{
}

AbcVisibilityHeader::AbcVisibilityHeader(void* object)
    : AbcVisibilityHeader()
{
    if (!object || !static_cast<const IObject*>(object)->valid()) return;
    const IVisibilityProperty visibility = find_visibility(*static_cast<IObject*>(object));
    const std::size_t sample_count = visibility.valid() ? visibility.getNumSamples() : 0;
    if (sample_count == 0) return;

    const TimeSamplingPtr sampling = visibility.getTimeSampling();
    time_range[0] = sampling->getSampleTime(0);
    time_range[1] = sampling->getSampleTime(static_cast<index_t>(sample_count) - 1);
    type =
        sample_count < 2 ? constant_type(visibility.getValue(ISampleSelector(index_t(0)))) : VISIBILITY_TYPE_ANIMATED;
}

void AbcVisibilityHeader::inherit_parent_visibility_header(const AbcVisibilityHeader& parent)
{
    if (is_undefined() || parent.is_constant_hidden()) {
        type = parent.type;
        time_range = parent.time_range;
    } else if (is_animated()) {
        // Intended: the range of a parent that is not animated counts, too, 0 to 0 where it has none.
        time_range[0] = std::min(time_range[0], parent.time_range[0]);
        time_range[1] = std::max(time_range[1], parent.time_range[1]);
    } else if (is_constant_visible() && parent.is_animated()) {
        type = VISIBILITY_TYPE_ANIMATED;
        time_range = parent.time_range;
    }
}
