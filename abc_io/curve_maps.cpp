/// Radii, texture coordinates and colours of curves.
#include "curve_maps.h"

#include "indexed_parameter.h"
#include "uv_maps.h"

#include <algorithm>
#include <exception>
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

/// Reads the indices that say more than "one value after the other". Intended: an array of fewer than two indices, and
/// a run of consecutive ones wherever it starts, leave `indices` empty. False when an index that counts leads beyond
/// the values.
template <class Parameter>
bool read_scattered_indices(const Parameter& parameter, const ISampleSelector& selector, std::size_t value_count,
                            CoreArray<unsigned int>& indices)
{
    indices.resize(0);
    if (!parameter.isIndexed() || !read_array(Parameter(parameter).getIndexProperty(), selector, indices)) return true;
    const auto gap = std::adjacent_find(indices.begin(), indices.end(),
                                        [](unsigned int index, unsigned int next) { return next != index + 1; });
    if (gap == indices.end()) {
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
    if (!source.valid() || !read_array(IFloatGeomParam(source).getValueProperty(), selector, header.radii)) return;
    if (!read_scattered_indices(source, selector, header.radii.get_count(), header.radius_indices)) {
        header.radii.resize(0);
        header.radius_indices.resize(0);
        return;
    }
    if (!has_widths) return;
    for (float& radius : header.radii)
        radius *= 0.5f; // a width is a diameter
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
