/// AbcCameraHeader: the names of its fit modes.
#include "abc_camera_header.h"

const char* AbcCameraHeader::get_fit_mode_name(const FitMode& mode)
{
    switch (mode) {
    case FIT_MODE_UNDEFINED:
        return "FIT_MODE_UNDEFINED";
    case FIT_MODE_HORIZONTAL:
        return "FIT_MODE_HORIZONTAL";
    case FIT_MODE_VERTICAL:
        return "FIT_MODE_VERTICAL";
    case FIT_MODE_REMAP:
        return "FIT_MODE_REMAP";
    case FIT_MODE_FILL:
        return "FIT_MODE_FILL";
    case FIT_MODE_COUNT:
        return "FIT_MODE_COUNT";
    }
    return "FIT_MODE_UNKNOWN";
}
