#include "geometry_check.h"

#include "object_walk.h"

#include <Alembic/AbcGeom/All.h>

#include <cmath>

namespace AbcG = Alembic::AbcGeom;

namespace {

constexpr double no_volume = 1e-30; // of a unit cube after the transform: nothing that anybody means

template <class Schema, class Check>
void check_samples(const Schema& schema, std::size_t count, const char* property, const std::string& path,
                   Findings& findings, Check&& check)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0 && schema.isConstant()) return;
        const auto index = static_cast<AbcA::index_t>(i);
        const std::string what = check(schema.getValue(AbcG::ISampleSelector(index)));
        if (what.empty()) continue;
        findings.add_sample(Severity::WARNING, path, property, i, schema.getTimeSampling()->getSampleTime(index), what);
    }
}

std::string check_lens(const AbcG::CameraSample& lens)
{
    if (!(lens.getFocalLength() > 0.0)) return "the focal length is not above 0";
    if (!(lens.getHorizontalAperture() > 0.0) || !(lens.getVerticalAperture() > 0.0))
        return "an aperture is not above 0";
    if (!(lens.getNearClippingPlane() < lens.getFarClippingPlane())) return "the clipping planes leave nothing visible";
    return lens.getShutterClose() < lens.getShutterOpen() ? "the shutter closes before it opens" : "";
}

} // namespace

void check_transform_or_camera(const AbcA::ObjectReaderPtr& object, Findings& findings)
{
    const AbcG::IObject handle(object);
    const std::string path = object->getFullName();
    if (AbcG::IXform::matches(handle.getMetaData())) {
        const AbcG::IXform transform(handle, AbcG::kWrapExisting);
        check_samples(transform.getSchema(), transform.getSchema().getNumSamples(), ".xform", path, findings,
                      [](const AbcG::XformSample& sample) -> std::string {
                          const bool is_flat = std::fabs(sample.getMatrix().determinant()) < no_volume;
                          return is_flat ? "scales to nothing along an axis: it has no inverse" : "";
                      });
    }
    if (AbcG::ICamera::matches(handle.getMetaData())) {
        const AbcG::ICamera camera(handle, AbcG::kWrapExisting);
        check_samples(camera.getSchema(), camera.getSchema().getNumSamples(), ".geom", path, findings, check_lens);
    }
}
