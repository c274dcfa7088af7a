/// @file
/// How shapes are made: a scene, taken apart, changed in one place, put together.
#pragma once

#include "scenes.h"
#include "shapes.h"
#include "stored_headers.h"

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace vo_fuzz {

/// The bytes of numbers as they stand in a file.
template <class Number>
std::string bytes_of(std::initializer_list<Number> numbers)
{
    return std::string(reinterpret_cast<const char*>(numbers.begin()), numbers.size() * sizeof(Number));
}

/// A sample: a digest, then the values.
inline std::string sample_of(const std::string& values)
{
    return std::string(16, 'd') + values;
}
template <class Number>
std::string sample_of(std::initializer_list<Number> numbers)
{
    return sample_of(bytes_of(numbers));
}

class ShapeMaker
{
public:
    /// `edit(ArchiveTree&)` makes the shape out of the small scene, or of the full one.
    template <class Edit>
    void add(const std::string& name, const Edit& edit, Shape::Opening opening = Shape::OPENS)
    {
        add_to(small_, name, edit, opening);
    }
    template <class Edit>
    void add_full(const std::string& name, const Edit& edit, Shape::Opening opening = Shape::OPENS)
    {
        add_to(full_, name, edit, opening);
    }
    template <class Edit>
    void add_refused(const std::string& name, const Edit& edit)
    {
        add(name, edit, Shape::IS_REFUSED);
    }
    void add_bytes(const std::string& name, std::string bytes, Shape::Opening opening)
    {
        shapes_.push_back({name, std::move(bytes), opening});
    }
    const std::string& small_scene_bytes() const { return small_; }

    std::vector<Shape> take() { return std::move(shapes_); }

private:
    template <class Edit>
    void add_to(const std::string& scene, const std::string& name, const Edit& edit, Shape::Opening opening)
    {
        ArchiveTree tree(scene);
        edit(tree);
        add_bytes(name, tree.file(), opening);
    }

    const std::string small_ = small_scene(), full_ = full_scene();
    std::vector<Shape> shapes_;
};

} // namespace vo_fuzz
