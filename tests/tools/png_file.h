/// Reads PNG files with libpng's simple interface, whatever their colour type.
#pragma once

#include <gtest/gtest.h>
#include <png.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// A picture; pixels as red, green, blue, alpha from the top left.
struct PngFile
{
    int width = 0, height = 0;
    std::vector<std::array<std::uint8_t, 4>> pixels;

    explicit PngFile(const std::string& path)
    {
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        if (!png_image_begin_read_from_file(&image, path.c_str())) {
            ADD_FAILURE() << path << ": " << image.message;
            return;
        }
        image.format = PNG_FORMAT_RGBA;
        width = static_cast<int>(image.width);
        height = static_cast<int>(image.height);
        pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        EXPECT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) << path << ": " << image.message;
    }

    const std::array<std::uint8_t, 4>& at(int x, int y) const
    {
        return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
    }
    bool is_covered(int x, int y) const { return at(x, y)[3] > 0; }
};
