/// Image: a picture of 8-bit colours.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Red, green, blue, alpha; not multiplied by alpha.
using Pixel = std::array<std::uint8_t, 4>;

class Image
{
public:
    Image(int width, int height, const Pixel& fill = {0, 0, 0, 0})
        : width_(width)
        , height_(height)
        , pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), fill)
    {
    }

    int get_width() const { return width_; }
    int get_height() const { return height_; }
    /// x from the left, y from the top.
    Pixel& at(int x, int y) { return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + x]; }
    const Pixel& at(int x, int y) const { return const_cast<Image&>(*this).at(x, y); }

    /// Copies a picture to (left, top), where it must fit.
    void put(const Image& picture, int left, int top);

private:
    int width_, height_;
    std::vector<Pixel> pixels_;
};

/// A PNG file's bytes, compressed: with an alpha channel when a pixel is not opaque.
std::string encode_png(const Image& image);
