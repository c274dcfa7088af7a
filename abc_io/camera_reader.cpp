/// Cameras: their attributes at a time, and when they are sampled.
#include "abc_input.h"

#include "abc_camera_header.h"
#include "abc_internal.h"
#include "reader_scope.h"

#include <cmath>
#include <cstddef>
#include <string>

using namespace Alembic::AbcGeom;

namespace {

constexpr double nearest_blend = 0.001; // seconds from a sample, up to which that sample is taken as it is
constexpr double metres_per_centimetre = 0.01;
constexpr double metres_per_millimetre = 0.001;

/// The attributes in stored units: `blend(value_of)` says what becomes of the value that `value_of` takes from a
/// sample.
template <class Blend>
void set_attributes(AbcCameraHeader& header, const Blend& blend)
{
    using Sample = CameraSample; // not const: getOverScanLeft is not, with some versions of Alembic
    header.vertical_aperture = blend([](Sample& s) { return s.getVerticalAperture(); }) * metres_per_centimetre;
    header.horizontal_aperture = blend([](Sample& s) { return s.getHorizontalAperture(); }) * metres_per_centimetre;
    header.focal_length = blend([](Sample& s) { return s.getFocalLength(); }) * metres_per_millimetre;
    header.horizontal_film_offset =
        blend([](Sample& s) { return s.getHorizontalFilmOffset(); }) * metres_per_centimetre;
    header.vertical_film_offset = blend([](Sample& s) { return s.getVerticalFilmOffset(); }) * metres_per_centimetre;
    header.focus_distance = blend([](Sample& s) { return s.getFocusDistance(); });
    header.f_stop = blend([](Sample& s) { return s.getFStop(); });
    header.lens_squeeze_ratio = blend([](Sample& s) { return s.getLensSqueezeRatio(); });
    header.overscan_left = blend([](Sample& s) { return s.getOverScanLeft(); });
    header.overscan_right = blend([](Sample& s) { return s.getOverScanRight(); });
    header.overscan_top = blend([](Sample& s) { return s.getOverScanTop(); });
    header.overscan_bottom = blend([](Sample& s) { return s.getOverScanBottom(); });
}

/// The mode of the first film back operation whose hint names one.
AbcCameraHeader::FitMode fit_mode_of(const CameraSample& sample)
{
    for (std::size_t i = 0; i < sample.getNumOps(); ++i) {
        const std::string hint = sample[i].getHint();
        if (hint == "filmFitHorz") return AbcCameraHeader::FIT_MODE_HORIZONTAL;
        if (hint == "filmFitVert") return AbcCameraHeader::FIT_MODE_VERTICAL;
        // Intended: "over" fills as well, and nothing is remapped.
        if (hint == "filmFitFill" || hint == "filmFitOver") return AbcCameraHeader::FIT_MODE_FILL;
    }
    return AbcCameraHeader::FIT_MODE_UNDEFINED;
}

void evaluate(const ICameraSchema& schema, double time, AbcCameraHeader& header)
{
    const auto count = static_cast<index_t>(schema.getNumSamples());
    if (count == 0) return;
    const TimeSamplingPtr sampling = schema.getTimeSampling();
    const auto [near_index, near_time] = sampling->getNearIndex(time, count);
    const double distance = std::abs(time - near_time);
    CameraSample near_sample = schema.getValue(ISampleSelector(near_index));

    // A time before the nearest sample has that sample as its ceiling, and a time after the last one, too.
    const index_t ceil_index = distance > nearest_blend ? sampling->getCeilIndex(time, count).first : near_index;
    if (ceil_index != near_index) {
        CameraSample ceil_sample = schema.getValue(ISampleSelector(ceil_index));
        // Intended: the weight of the nearer sample is its distance in seconds, however far apart the samples are.
        set_attributes(header, [&](auto value_of) {
            return (1.0 - distance) * value_of(ceil_sample) + distance * value_of(near_sample);
        });
    } else {
        set_attributes(header, [&](auto value_of) { return value_of(near_sample); });
    }
    header.fit_mode = fit_mode_of(near_sample);
}

} // namespace

bool AbcInput::evaluate_camera_attributes(const AbcInputArchiveHandle& handle, const double& time,
                                          AbcCameraHeader& header)
{
    return with_handle_object<ICamera>(handle, [&](const ICamera& camera) {
        evaluate(camera.getSchema(), time, header);
        return true;
    });
}

bool AbcInput::get_camera_sampling(const AbcInputArchiveHandle& handle, const double& start, const double& end,
                                   GMathTimeSampling& sampling)
{
    return with_handle_object<ICamera>(handle, [&](const ICamera& camera) {
        const ICameraSchema& schema = camera.getSchema();
        AbcInternal::get_frame_sampling(schema.getTimeSampling(), schema.getNumSamples(), start, end, sampling);
        return true;
    });
}

bool AbcInput::get_camera_sampling(const AbcFileList& files, const CoreString& object_name, const double& start,
                                   const double& end, GMathTimeSampling& sampling)
{
    return with_typed_object<ICamera>(files, object_name, [&](const AbcInputArchiveHandle& handle, const ICamera&) {
        return get_camera_sampling(handle, start, end, sampling);
    });
}
