/// RenderOptions: how a picture is made.
#pragma once

#include <optional>
#include <string>

/// What the colour of a surface tells.
enum class Shade {
    CLAY,     ///< nothing: light and shadow show the form
    NORMAL,   ///< world normals on the outside; -1 to 1 becomes black to full
    UV,       ///< u in red, v in green, tenths as lines; grey without UVs
    GROUP,    ///< shading groups of meshes, stored colours of curves, else the object
    VELOCITY, ///< direction in colour, against the fastest point of the picture; still is grey
};

struct ImageSize
{
    int width = 0, height = 0; ///< pixels
};

struct RenderOptions
{
    Shade shade = Shade::CLAY;
    std::optional<ImageSize> size;     ///< of each picture; without it the choice of the view
    unsigned int sample_count = 16;    ///< of each pixel
    double shutter = 0.0;              ///< seconds, half of them before the time of the picture
    std::string camera;                ///< full name of a camera of the archive; empty: the automatic view
    std::string object;                ///< full name of what is shown with all below it; empty: everything
    double azimuth = 35.0;             ///< degrees, of the automatic view: from the front (+z) towards +x
    double elevation = 25.0;           ///< degrees, above the horizon
    std::optional<double> point_width; ///< archive units; of points, whose widths are not read
    std::optional<double> curve_width; ///< archive units; of curves that have none
    bool is_transparent = false;       ///< nothing behind the objects
};
