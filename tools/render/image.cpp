#include "image.h"

#include <algorithm>

void Image::put(const Image& picture, int left, int top)
{
    for (int y = 0; y < picture.height_; ++y)
        std::copy_n(&picture.at(0, y), picture.width_, &at(left, top + y));
}
