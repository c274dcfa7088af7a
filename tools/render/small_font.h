/// Numbers on pictures.
#pragma once

#include "image.h"

#include <string_view>

/// Draws digits, '.', '-', 's' and blanks, 7 pixels high and 6 a character, from (left, top) on; what leaves the
/// picture is cut off, other characters are blank.
void draw_text(Image& image, std::string_view text, int left, int top, const Pixel& ink);
