/// ContactSheet: many pictures on one.
#pragma once

#include "image.h"
#include "render_options.h"

/// Pictures of one size in rows, each with its time below, in a frame of free space.
class ContactSheet
{
public:
    ContactSheet(int picture_count, const ImageSize& picture_size);

    /// Of a whole sheet, pixels.
    static ImageSize get_size(int picture_count, const ImageSize& picture_size);

    /// Puts the next picture; `time` in seconds.
    void add(const Image& picture, double time);
    const Image& get_image() const { return image_; }

private:
    const ImageSize picture_size_;
    const int columns_;
    int count_ = 0;
    Image image_;
};
