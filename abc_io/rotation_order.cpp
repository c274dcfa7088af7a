/// The table of rotation orders.
#include "rotation_order.h"

#include <vo_gmath/gmath_rotation.h>

namespace {

struct NamedOrder
{
    std::string_view first_axes;
    GMathRotation::Order order;
};

constexpr NamedOrder orders[] = {
    {"XY", GMathRotation::ORDER_XYZ}, {"XZ", GMathRotation::ORDER_XZY}, {"YZ", GMathRotation::ORDER_YZX},
    {"YX", GMathRotation::ORDER_YXZ}, {"ZX", GMathRotation::ORDER_ZXY}, {"ZY", GMathRotation::ORDER_ZYX},
};

} // namespace

unsigned int rotation_order_of(std::string_view axes)
{
    if (axes.size() < 2) return GMathRotation::ORDER_XYZ; // any order does for one axis
    for (const NamedOrder& known : orders)
        if (axes.substr(0, 2) == known.first_axes) return known.order;
    // The same letter twice: an orientation axis before a rotation order that begins with it.
    if (axes[0] == 'Y') return GMathRotation::ORDER_YXZ;
    if (axes[0] == 'Z') return GMathRotation::ORDER_ZXY;
    return GMathRotation::ORDER_XYZ;
}
