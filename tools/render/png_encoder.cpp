#include "image.h"

#include <png.h>

#include <stdexcept>

namespace {

bool is_opaque(const Image& image)
{
    for (int y = 0; y < image.get_height(); ++y)
        for (int x = 0; x < image.get_width(); ++x)
            if (image.at(x, y)[3] != 255) return false;
    return true;
}

void append(png_structp png, png_bytep bytes, png_size_t count)
{
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), count);
}

/// libpng would leave by longjmp otherwise.
[[noreturn]] void fail(png_structp, png_const_charp what)
{
    throw std::runtime_error(std::string("the picture cannot be packed: ") + what);
}

struct PngWriter
{
    PngWriter()
        : png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, nullptr))
        , info(png ? png_create_info_struct(png) : nullptr)
    {
        if (!info) throw std::bad_alloc();
    }
    ~PngWriter() { png_destroy_write_struct(&png, &info); }
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    png_structp png;
    png_infop info;
};

} // namespace

std::string encode_png(const Image& image)
{
    std::string bytes;
    PngWriter writer;
    const bool has_alpha = !is_opaque(image);
    png_set_write_fn(writer.png, &bytes, append, nullptr);
    png_set_IHDR(writer.png, writer.info, static_cast<png_uint_32>(image.get_width()),
                 static_cast<png_uint_32>(image.get_height()), 8, has_alpha ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_sRGB(writer.png, writer.info, PNG_sRGB_INTENT_PERCEPTUAL);
    png_write_info(writer.png, writer.info);
    std::vector<png_byte> row(static_cast<std::size_t>(image.get_width()) * 4);
    for (int y = 0; y < image.get_height(); ++y) {
        png_byte* out = row.data();
        for (int x = 0; x < image.get_width(); ++x)
            for (int channel = 0; channel < (has_alpha ? 4 : 3); ++channel)
                *out++ = image.at(x, y)[static_cast<std::size_t>(channel)];
        png_write_row(writer.png, row.data());
    }
    png_write_end(writer.png, writer.info);
    return bytes;
}
