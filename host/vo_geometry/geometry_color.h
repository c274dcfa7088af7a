/// Colour of four 8-bit channels.
#pragma once

/// 0 to 255 each; alpha 255 is opaque. Not filled by default.
struct GeometryColor
{
    unsigned char red, green, blue, alpha;

    friend constexpr bool operator==(const GeometryColor& a, const GeometryColor& b)
    {
        return a.red == b.red && a.green == b.green && a.blue == b.blue && a.alpha == b.alpha;
    }
    friend constexpr bool operator!=(const GeometryColor& a, const GeometryColor& b) { return !(a == b); }
};

static_assert(sizeof(GeometryColor) == 4, "four channels, nothing else");
