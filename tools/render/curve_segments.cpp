#include "curve_segments.h"

#include "closed_curves.h"

#include <algorithm>

namespace {

using Weights = std::array<float, 4>;

/// A basis for cubic segments.
struct CurveBasis
{
    unsigned int step; ///< from the points of a segment to those of the next
    Weights bezier[4]; ///< weights of a segment's four control points in the four of its Bezier form
    Weights widths[4]; ///< the same for widths
};

constexpr float third = 1.0f / 3.0f, sixth = 1.0f / 6.0f;

constexpr Weights bezier_rows[4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

constexpr CurveBasis bezier_basis = {3,
                                     {bezier_rows[0], bezier_rows[1], bezier_rows[2], bezier_rows[3]},
                                     {bezier_rows[0], bezier_rows[1], bezier_rows[2], bezier_rows[3]}};
constexpr CurveBasis bspline_basis = {
    1,
    {{sixth, 4 * sixth, sixth, 0}, {0, 2 * third, third, 0}, {0, third, 2 * third, 0}, {0, sixth, 4 * sixth, sixth}},
    {{sixth, 4 * sixth, sixth, 0}, {0, 2 * third, third, 0}, {0, third, 2 * third, 0}, {0, sixth, 4 * sixth, sixth}}};
constexpr CurveBasis catmull_rom_basis = {1,
                                          {{0, 1, 0, 0}, {-sixth, 1, sixth, 0}, {0, sixth, 1, -sixth}, {0, 0, 1, 0}},
                                          {{0, 1, 0, 0}, {-sixth, 1, sixth, 0}, {0, sixth, 1, -sixth}, {0, 0, 1, 0}}};
// Point, tangent, point, tangent.
constexpr CurveBasis hermite_basis = {2,
                                      {{1, 0, 0, 0}, {1, third, 0, 0}, {0, 0, 1, -third}, {0, 0, 1, 0}},
                                      {{1, 0, 0, 0}, {2 * third, 0, third, 0}, {third, 0, 2 * third, 0}, {0, 0, 1, 0}}};
// Coefficients of the third power down to that of none, where the segment starts.
constexpr CurveBasis power_basis = {4,
                                    {{0, 0, 0, 1}, {0, 0, third, 1}, {0, third, 2 * third, 1}, {1, 1, 1, 1}},
                                    {{0, 0, 0, 1}, {0, 0, 0, 1}, {0, 0, 0, 1}, {0, 0, 0, 1}}};

const CurveBasis* find_basis(AbcCurveHeader::BasisType type)
{
    switch (type) {
    case AbcCurveHeader::BASIS_TYPE_BEZIER:
        return &bezier_basis;
    case AbcCurveHeader::BASIS_TYPE_BSPLINE:
        return &bspline_basis;
    case AbcCurveHeader::BASIS_TYPE_CATMULLROM:
        return &catmull_rom_basis;
    case AbcCurveHeader::BASIS_TYPE_HERMITE:
        return &hermite_basis;
    case AbcCurveHeader::BASIS_TYPE_POWER:
        return &power_basis;
    default:
        return nullptr;
    }
}

/// Points of one curve, counted on round a closed one and held at the ends of one that reaches them.
struct CurvePoints
{
    unsigned int first, count;
    unsigned int lead; ///< how often the first point and the last one are repeated

    unsigned int at(unsigned int i) const
    {
        if (lead > 0) return first + std::clamp(i, lead, count - 1 + lead) - lead;
        return first + i % count;
    }
};

class SegmentFinder
{
public:
    SegmentFinder(const AbcCurveHeader& curves, const CoreArray<GMathVec3<float>>& positions)
        : curves_(curves)
        , positions_(positions)
        , is_closed_(curves.periodicity_type == AbcCurveHeader::PERIODICITY_TYPE_PERIODIC)
    {
    }

    CurveSegments find()
    {
        const bool is_variable = curves_.curve_type == AbcCurveHeader::CURVE_TYPE_VARIABLE_ORDER;
        const CurveBasis* basis = nullptr;
        if (curves_.curve_type == AbcCurveHeader::CURVE_TYPE_CUBIC) basis = find_basis(curves_.basis_type);
        if (is_variable && are_all_of_order_4()) basis = &bspline_basis;
        const unsigned int lead = is_variable && !is_closed_ ? 2 : 0;
        result_.is_cubic = basis != nullptr;
        result_.is_closed = is_closed_;
        unsigned int first = 0;
        for (unsigned int curve = 0; curve < curves_.vertex_counts.get_count(); ++curve) {
            const unsigned int count = curves_.vertex_counts[curve];
            const CurvePoints points{first, count_own_points(curves_, positions_, first, count), lead};
            if (basis && points.count >= (is_closed_ ? 3u : 4u))
                add_cubic(curve, points, *basis);
            else
                add_straight(curve, points);
            first += count;
        }
        return std::move(result_);
    }

private:
    bool are_all_of_order_4() const
    {
        return curves_.orders.get_count() == curves_.vertex_counts.get_count() &&
               std::all_of(curves_.orders.begin(), curves_.orders.end(),
                           [](unsigned char order) { return order == 4; });
    }

    void add_cubic(unsigned int curve, const CurvePoints& points, const CurveBasis& basis)
    {
        const unsigned int reach = points.count + 2 * points.lead;
        const unsigned int segment_count = is_closed_ ? points.count / basis.step : (reach - 4) / basis.step + 1;
        for (unsigned int segment = 0; segment < segment_count; ++segment) {
            BlendedPoint blend{};
            for (unsigned int i = 0; i < 4; ++i)
                blend.points[i] = points.at(segment * basis.step + i);
            result_.segments.push_back({static_cast<unsigned int>(result_.vertices.size()), curve});
            for (std::size_t i = 0; i < 4; ++i) {
                blend.weights = basis.bezier[i];
                result_.vertices.push_back(blend);
                blend.weights = basis.widths[i];
                result_.widths.push_back(blend);
            }
        }
    }

    void add_straight(unsigned int curve, const CurvePoints& points)
    {
        if (points.count < 2) return;
        const unsigned int segment_count = is_closed_ ? points.count : points.count - 1;
        for (unsigned int segment = 0; segment < segment_count; ++segment) {
            result_.segments.push_back({static_cast<unsigned int>(result_.vertices.size()), curve});
            const unsigned int start = points.first + segment, end = points.first + (segment + 1) % points.count;
            const unsigned int last = result_.is_cubic ? 3 : 1;
            for (unsigned int i = 0; i <= last; ++i) {
                const float weight = static_cast<float>(i) / static_cast<float>(last);
                result_.vertices.push_back({{start, end, end, end}, {1.0f - weight, weight, 0, 0}});
                result_.widths.push_back(result_.vertices.back());
            }
        }
    }

    const AbcCurveHeader& curves_;
    const CoreArray<GMathVec3<float>>& positions_;
    const bool is_closed_;
    CurveSegments result_;
};

} // namespace

CurveSegments find_curve_segments(const AbcCurveHeader& curves, const CoreArray<GMathVec3<float>>& positions)
{
    return SegmentFinder(curves, positions).find();
}
