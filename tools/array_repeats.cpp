#include "array_repeats.h"

namespace AbcA = Alembic::AbcCoreAbstract;

namespace {

constexpr std::uint64_t large_sample_bytes = 1u << 16;

} // namespace

std::optional<ArrayRepeats::Print> ArrayRepeats::find_print(std::int64_t index) const
{
    // Those of wide strings cover only their beginning.
    if (array_.getDataType().getPod() == AbcA::kWstringPOD) return {};
    Print print;
    // There are writers that leave digests empty.
    if (!array_.getKey(index, print.key) || print.key.digest == Alembic::Util::Digest()) return {};
    array_.getDimensions(index, print.shape);
    return print;
}

bool ArrayRepeats::repeats(std::int64_t index)
{
    if (!before_) return false;
    const std::optional<Print> now = find_print(index);
    return now && now->key == before_->key && now->shape == before_->shape;
}

void ArrayRepeats::note(std::int64_t index, const AbcA::ArraySample& sample)
{
    const std::uint64_t bytes = sample.size() * sample.getDataType().getNumBytes();
    before_ = bytes < large_sample_bytes ? std::nullopt : find_print(index);
}
