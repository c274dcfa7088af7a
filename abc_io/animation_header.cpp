/// Animation headers of transforms and cameras.
#include "abc_animation_header.h"

#include "abc_input.h"
#include "reader_scope.h"

#include <algorithm>
#include <cstddef>
#include <limits>

using namespace Alembic::AbcGeom;

namespace {

/// Everything but the host's field.
void set_samples(AbcAnimationHeader& header, std::size_t sample_count, const TimeSampling& sampling)
{
    const double start_time = sampling.getSampleTime(0);
    // Without samples there is no last one; its time is then that of the first, too.
    const double end_time =
        sample_count >= 2 ? sampling.getSampleTime(static_cast<index_t>(sample_count) - 1) : start_time;
    constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
    header.sample_count = static_cast<std::int32_t>(std::min(sample_count, most));
    header.start_time = start_time;
    header.end_time = end_time;
}

} // namespace

bool AbcInput::get_animation_header(AbcInputArchiveHandle& handle, const CoreString& object_name,
                                    AbcAnimationHeader& header)
{
    const ScopedLock lock(handle);
    handle.delete_object(); // first, so that a failure leaves the handle without an object
    return with_bound_object<IXform>(handle, object_name, [&](const AbcInputArchiveHandle&, const IXform& xform) {
        const IXformSchema& schema = xform.getSchema();
        set_samples(header, schema.isConstant() ? 1 : schema.getNumSamples(), *schema.getTimeSampling());
        return true;
    });
}

bool AbcInput::get_camera_animation_header(AbcInputArchiveHandle& handle, const CoreString& object_name,
                                           AbcAnimationHeader& header)
{
    const ScopedLock lock(handle);
    handle.delete_object();
    return with_bound_object<ICamera>(handle, object_name, [&](const AbcInputArchiveHandle&, const ICamera& camera) {
        // Intended: unlike a transform, a camera that never changes keeps its count.
        const ICameraSchema& schema = camera.getSchema();
        set_samples(header, schema.getNumSamples(), *schema.getTimeSampling());
        return true;
    });
}
