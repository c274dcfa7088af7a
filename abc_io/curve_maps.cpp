/// Radii, texture coordinates and colours of curves.
#include "curve_maps.h"

#include "indexed_parameter.h"
#include "sample_pieces.h"
#include "uv_maps.h"

#include <algorithm>
#include <exception>
#include <numeric>
#include <string>
#include <utility>

using namespace Alembic::AbcGeom;

namespace {

/// A colour as archives store it.
struct FloatColor
{
    float red, green, blue, alpha;
};

} // namespace

template <>
struct ElementLayout<FloatColor>
{
    using Scalar = float;
    static constexpr std::size_t extent = 4;
};

namespace {

/// The parameter of that name, whatever its interpretation. Invalid when there is none, or when its values have another
/// data type: that is as good as none.
template <class Parameter>
Parameter find_parameter(const ICompoundProperty& parent, const std::string& name)
{
    if (!parent.valid() || !parent.getPropertyHeader(name)) return Parameter();
    try {
        const Parameter parameter(parent, name);
        using Traits = typename Parameter::prop_type::traits_type;
        return parameter.valid() && parameter.getDataType() == Traits::dataType() ? parameter : Parameter();
    } catch (const std::exception&) {
        return Parameter();
    }
}

/// The parameter among the schema's own properties, else among its arbitrary geometry parameters; may be invalid.
template <class Parameter>
Parameter find_curve_parameter(const ICurvesSchema& schema, const std::string& name)
{
    const Parameter own = find_parameter<Parameter>(schema, name);
    return own.valid() ? own : find_parameter<Parameter>(schema.getArbGeomParams(), name);
}

/// How many of `count` indices, from the first on, are consecutive.
std::size_t run_length(const unsigned int* indices, std::size_t count)
{
    const unsigned int* const gap = std::adjacent_find(
        indices, indices + count, [](unsigned int index, unsigned int next) { return next != index + 1; });
    return gap == indices + count ? count : static_cast<std::size_t>(gap - indices) + 1;
}

/// Consecutive indices at the start of a sample.
struct Run
{
    unsigned int first = 0;
    std::size_t length = 0;
};

/// Reads indices up to where they cease to be consecutive, without an array for them all.
Run read_run(const SamplePieces<unsigned int>& pieces)
{
    constexpr std::size_t length = piece_length<unsigned int>;
    CoreArray<unsigned int> piece;
    piece.resize_for_overwrite(length);
    Run run;
    while (run.length < pieces.size()) {
        const std::size_t part = std::min(length, pieces.size() - run.length);
        pieces.read(run.length, part, piece.get_data());
        if (run.length == 0) run.first = piece[0];
        if (piece[0] != static_cast<unsigned int>(run.first + run.length)) break;
        const std::size_t consecutive = run_length(piece.get_data(), part);
        run.length += consecutive;
        if (consecutive < part) break;
    }
    return run;
}

/// Reads the indices that say more than "one value after the other". Intended: an array of fewer than two indices, and
/// a run of consecutive ones wherever it starts, leave `indices` empty. False when an index that counts leads beyond
/// the values.
template <class Parameter>
bool read_scattered_indices(const Parameter& parameter, const ISampleSelector& selector, std::size_t value_count,
                            CoreArray<unsigned int>& indices)
{
    indices.resize(0);
    if (!parameter.isIndexed()) return true;
    const IUInt32ArrayProperty property = Parameter(parameter).getIndexProperty();
    const std::size_t count = element_count(property, selector);
    const SamplePieces<unsigned int> pieces(property, selector, count);
    if (can_hold<unsigned int>(property, count) && pieces.is_worthwhile()) {
        const Run run = read_run(pieces);
        if (run.length == count) return true;
        indices.resize_for_overwrite(count);
        std::iota(indices.begin(), indices.begin() + run.length, run.first);
        pieces.read(run.length, count - run.length, indices.begin() + run.length);
    } else if (!read_array(property, selector, indices)) {
        return true;
    } else if (run_length(indices.begin(), indices.get_count()) == indices.get_count()) {
        indices.clear();
        return true;
    }
    return indices_are_below(indices, value_count);
}

unsigned char to_byte(float channel)
{
    const double value = channel * 255.0;
    if (!(value > 0.0)) return 0;                              // which a channel that is no number becomes too
    return static_cast<unsigned char>(std::min(value, 255.0)); // truncated, by intention not rounded
}

} // namespace

void read_curve_radii(const ICurvesSchema& schema, const ISampleSelector& selector, AbcCurveHeader& header)
{
    header.radii.resize(0);
    header.radius_indices.resize(0);
    const IFloatGeomParam widths = schema.getWidthsParam();
    const bool has_widths = widths.valid();
    const IFloatGeomParam source = has_widths ? widths : find_curve_parameter<IFloatGeomParam>(schema, ".radius");
    const float factor = has_widths ? 0.5f : 1.0f; // a width is a diameter
    const auto scale = [factor](float* values, std::size_t count, std::size_t) {
        std::transform(values, values + count, values, [factor](float value) { return value * factor; });
        return count;
    };
    if (!source.valid() || !read_array_and(IFloatGeomParam(source).getValueProperty(), selector, header.radii, scale))
        return;
    if (!read_scattered_indices(source, selector, header.radii.get_count(), header.radius_indices)) {
        header.radii.resize(0);
        header.radius_indices.resize(0);
    }
}

void read_curve_uvs(const ICurvesSchema& schema, const ISampleSelector& selector, AbcCurveHeader& header)
{
    const IV2fGeomParam uvs = schema.getUVsParam();
    const std::size_t value_count = parameter_value_count(uvs, selector);
    CoreArray<unsigned int> indices;
    if (value_count == 0 || !read_scattered_indices(uvs, selector, value_count, indices)) return;
    header.uv_maps.resize(1);
    GeometryUvMap& map = header.uv_maps[0];
    map.name = parameter_display_name(uvs.getMetaData(), uvs.getName());
    read_uv_values(uvs, selector, map.values);
    map.indices = std::move(indices);
}

void read_curve_colors(const ICurvesSchema& schema, const ISampleSelector& selector, AbcCurveHeader& header)
{
    const IC4fGeomParam stored = find_curve_parameter<IC4fGeomParam>(schema, ".color");
    const std::size_t value_count = parameter_value_count(stored, selector);
    CoreArray<unsigned int> indices;
    CoreArray<FloatColor> colors;
    if (value_count == 0 || !read_parameter_indices(stored, selector, value_count, indices) ||
        !read_array(IC4fGeomParam(stored).getValueProperty(), selector, colors))
        return;
    header.color_maps.resize(1);
    GeometryColorMap& map = header.color_maps[0];
    map.name = parameter_display_name(stored.getMetaData(), stored.getName());
    map.values.resize_for_overwrite(colors.get_count());
    std::transform(colors.begin(), colors.end(), map.values.begin(), [](const FloatColor& color) {
        return GeometryColor{to_byte(color.red), to_byte(color.green), to_byte(color.blue), to_byte(color.alpha)};
    });
    map.indices = std::move(indices);
}
