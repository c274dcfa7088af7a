#include "contact_sheet.h"

#include "small_font.h"

#include <fmt/format.h>

#include <cmath>

namespace {

constexpr int gap = 8;           // pixels between pictures
constexpr int label_height = 16; // pixels below each
constexpr Pixel paper = {32, 34, 38, 255}, ink = {190, 194, 200, 255};

int find_column_count(int picture_count)
{
    return static_cast<int>(std::ceil(std::sqrt(static_cast<double>(picture_count))));
}

} // namespace

ImageSize ContactSheet::get_size(int picture_count, const ImageSize& picture_size)
{
    const int columns = find_column_count(picture_count), rows = (picture_count + columns - 1) / columns;
    return {columns * (picture_size.width + gap) + gap, rows * (picture_size.height + label_height + gap) + gap};
}

ContactSheet::ContactSheet(int picture_count, const ImageSize& picture_size)
    : picture_size_(picture_size)
    , columns_(find_column_count(picture_count))
    , image_(get_size(picture_count, picture_size).width, get_size(picture_count, picture_size).height, paper)
{
}

void ContactSheet::add(const Image& picture, double time)
{
    const int left = gap + count_ % columns_ * (picture_size_.width + gap);
    const int top = gap + count_ / columns_ * (picture_size_.height + label_height + gap);
    image_.put(picture, left, top);
    draw_text(image_, fmt::format("{:.3f} s", time), left, top + picture_size_.height + 4, ink);
    ++count_;
}
