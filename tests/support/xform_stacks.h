/// Random stacks of transform operations.
#pragma once

#include <Alembic/AbcGeom/All.h>
#include <vo_gmath/gmath_matrix4x4.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace xform_stacks {

namespace AbcG = Alembic::AbcGeom;

using Random = std::mt19937;

inline double number(Random& random, double limit)
{
    return std::uniform_real_distribution<double>(-limit, limit)(random);
}

inline bool chance(Random& random, int one_in)
{
    return std::uniform_int_distribution<int>(1, one_in)(random) == 1;
}

/// Any angle up to 200 degrees, and often one at which orders of rotation degenerate.
inline double angle(Random& random)
{
    const double special[] = {0.0, 90.0, -90.0, 180.0, -180.0, 45.0};
    return chance(random, 4) ? special[random() % 6] : number(random, 200.0);
}

/// Operations in the order that the host's components compose in, pivots closed by their inverses, at most one axis of
/// orientation; each part is there or not. All channels are 0.
inline std::vector<AbcG::XformOp> random_canonical_operations(Random& random)
{
    using Op = AbcG::XformOp;
    const AbcG::XformOperationType axes[] = {AbcG::kRotateXOperation, AbcG::kRotateYOperation, AbcG::kRotateZOperation};
    std::vector<Op> ops;
    const auto maybe = [&](AbcG::XformOperationType type, int hint) {
        if (chance(random, 2)) ops.emplace_back(type, static_cast<std::uint8_t>(hint));
    };
    maybe(AbcG::kTranslateOperation, AbcG::kTranslateHint);
    maybe(AbcG::kTranslateOperation, AbcG::kRotatePivotTranslationHint);
    const bool has_rotate_pivot = chance(random, 2), has_scale_pivot = chance(random, 2);
    if (has_rotate_pivot) ops.emplace_back(AbcG::kTranslateOperation, std::uint8_t(AbcG::kRotatePivotPointHint));
    if (chance(random, 4)) {
        ops.emplace_back(AbcG::kRotateOperation, std::uint8_t(AbcG::kRotateHint));
    } else {
        int order[] = {0, 1, 2};
        std::shuffle(order, order + 3, random);
        const auto count = random() % 4;
        for (std::size_t i = 0; i < count; ++i)
            ops.emplace_back(axes[order[i]], std::uint8_t(AbcG::kRotateHint));
    }
    if (chance(random, 3)) ops.emplace_back(axes[random() % 3], std::uint8_t(AbcG::kRotateOrientationHint));
    if (has_rotate_pivot) ops.emplace_back(AbcG::kTranslateOperation, std::uint8_t(AbcG::kRotatePivotPointHint));
    maybe(AbcG::kTranslateOperation, AbcG::kScalePivotTranslationHint);
    if (has_scale_pivot) ops.emplace_back(AbcG::kTranslateOperation, std::uint8_t(AbcG::kScalePivotPointHint));
    maybe(AbcG::kMatrixOperation, AbcG::kMayaShearHint);
    maybe(AbcG::kScaleOperation, AbcG::kScaleHint);
    if (has_scale_pivot) ops.emplace_back(AbcG::kTranslateOperation, std::uint8_t(AbcG::kScalePivotPointHint));
    return ops;
}

/// A sample of the operations with random values: scales also negative and zero, each second pivot the inverse of the
/// first of its kind.
inline AbcG::XformSample random_sample(Random& random, const std::vector<AbcG::XformOp>& ops)
{
    AbcG::XformSample sample;
    for (const AbcG::XformOp& given : ops) {
        AbcG::XformOp op = given;
        const AbcG::XformOp* first = nullptr;
        for (std::size_t i = 0; i < sample.getNumOps() && !first; ++i)
            if (op.isTranslateOp() && sample[i].getOpEncoding() == op.getOpEncoding()) first = &sample[i];
        if (op.isTranslateOp()) {
            op.setTranslate(first ? -first->getTranslate()
                                  : AbcG::V3d(number(random, 20), number(random, 20), number(random, 20)));
        } else if (op.isScaleOp()) {
            const double z = chance(random, 6) ? 0.0 : number(random, 3);
            op.setScale(AbcG::V3d(number(random, 3), number(random, 3), z));
        } else if (op.isMatrixOp()) {
            AbcG::M44d matrix;
            if (op.getHint() == AbcG::kMayaShearHint) {
                matrix[1][0] = number(random, 2);
                matrix[2][0] = number(random, 2);
                matrix[2][1] = number(random, 2);
            } else {
                for (int i = 0; i < 16; ++i)
                    matrix[i / 4][i % 4] = number(random, 2);
            }
            op.setMatrix(matrix);
        } else {
            if (op.isRotateOp()) op.setAxis(AbcG::V3d(number(random, 2), number(random, 2), number(random, 2)));
            op.setAngle(angle(random));
        }
        sample.addOp(op);
    }
    return sample;
}

inline std::string describe(const std::vector<AbcG::XformOp>& ops)
{
    std::string text = "operations (type/hint)";
    for (const AbcG::XformOp& op : ops)
        text += " " + std::to_string(int(op.getType())) + "/" + std::to_string(int(op.getHint()));
    return text;
}

/// The largest difference of two elements, relative to the largest element (but to 1 at least).
inline double relative_difference(const GMathMatrix4x4<double>& a, const GMathMatrix4x4<double>& b)
{
    double difference = 0.0, largest = 1.0;
    for (int i = 0; i < 16; ++i) {
        const double x = a.get_data()[i], y = b.get_data()[i];
        if (!(std::abs(x - y) <= difference)) difference = std::abs(x - y); // also for what is not a number
        largest = std::max({largest, std::abs(x), std::abs(y)});
    }
    return difference / largest;
}

} // namespace xform_stacks
