/// AbcCameraHeader: film back, lens and overscan of a camera at one time.
#pragma once

#include "vo_abc_io_export.h"

#include <cstdint>

/// A camera in the host's units.
class VO_ABC_IO_EXPORT AbcCameraHeader
{
public:
    /// How the film back fits the picture.
    enum FitMode : std::int32_t {
        FIT_MODE_UNDEFINED = -1, ///< the archive does not say
        FIT_MODE_HORIZONTAL = 0, ///< film back operation "filmFitHorz"
        FIT_MODE_VERTICAL = 1,   ///< film back operation "filmFitVert"
        FIT_MODE_REMAP = 2,      ///< no reader yields it
        FIT_MODE_FILL = 3,       ///< film back operation "filmFitFill" or "filmFitOver"
        FIT_MODE_COUNT = 4,      ///< number of defined modes; no reader yields it
    };

    /// The enumerator's own name; "FIT_MODE_UNKNOWN" for any other value.
    static const char* get_fit_mode_name(const FitMode& mode);

    double vertical_aperture = 0.0;        ///< metres; stored in centimetres
    double horizontal_aperture = 0.0;      ///< metres; stored in centimetres
    double focal_length = 0.0;             ///< metres; stored in millimetres
    double horizontal_film_offset = 0.0;   ///< metres; stored in centimetres
    double vertical_film_offset = 0.0;     ///< metres; stored in centimetres
    double focus_distance = 0.0;           ///< as stored
    double f_stop = 0.0;                   ///< as stored
    double lens_squeeze_ratio = 0.0;       ///< as stored
    double overscan_left = 0.0;            ///< as stored: a fraction of the screen window, like the other three
    double overscan_right = 0.0;           ///< as stored
    double overscan_top = 0.0;             ///< as stored
    double overscan_bottom = 0.0;          ///< as stored
    FitMode fit_mode = FIT_MODE_UNDEFINED; ///< of the first film back operation that names one
};
