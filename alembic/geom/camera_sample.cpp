/// One sample of a camera.
#include <Alembic/AbcGeom/CameraSample.h>

#include <cmath>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// In stored order; the getters of CameraSample say what each is.
constexpr std::array<double, 16> default_core = {35.0, 3.6, 0.0, 2.4, 0.0, 1.0,        0.0, 0.0,
                                                 0.0,  0.0, 5.6, 5.0, 0.0, 1.0 / 48.0, 0.1, 100000.0};

} // namespace

CameraSample::CameraSample()
{
    reset();
}

CameraSample::CameraSample(double top, double bottom, double left, double right)
{
    reset();
    const double squeeze = (right - left) / 2.0;
    const double aperture = getHorizontalAperture();
    setLensSqueezeRatio(squeeze);
    setHorizontalFilmOffset((left + squeeze) * aperture / (2.0 * squeeze));
    setVerticalAperture((top - bottom) / 2.0 * aperture / squeeze);
    setVerticalFilmOffset((squeeze * getVerticalAperture() / aperture + bottom) * aperture / 2.0);
}

void CameraSample::getScreenWindow(double& top, double& bottom, double& left, double& right) const
{
    const double aperture = getHorizontalAperture();
    const double half_width = getLensSqueezeRatio();
    const double half_height = half_width * getVerticalAperture() / aperture;
    const M33d film_back = getFilmBackMatrix();
    // The corners that are transformed are the top left and the bottom right one.
    const V2d top_left =
        V2d(-(1.0 + getOverScanLeft()) * half_width, (1.0 + getOverScanTop()) * half_height) * film_back;
    const V2d bottom_right =
        V2d((1.0 + getOverScanRight()) * half_width, -(1.0 + getOverScanBottom()) * half_height) * film_back;
    const double horizontal_shift = 2.0 * getHorizontalFilmOffset() * half_width / aperture;
    const double vertical_shift = 2.0 * getVerticalFilmOffset() / aperture;
    left = top_left.x + horizontal_shift;
    right = bottom_right.x + horizontal_shift;
    bottom = bottom_right.y + vertical_shift;
    top = top_left.y + vertical_shift;
}

double CameraSample::getCoreValue(std::size_t index) const
{
    if (index >= core_.size()) {
        ABCA_THROW("Invalid index in CameraSample: " << index << ", a camera has " << core_.size() << " core values.");
    }
    return core_[index];
}

double CameraSample::getFieldOfView() const
{
    const double millimetres_per_centimetre = 10.0;
    return RadiansToDegrees(2.0 *
                            std::atan(millimetres_per_centimetre * getHorizontalAperture() / (2.0 * getFocalLength())));
}

std::size_t CameraSample::addOp(FilmBackXformOp op)
{
    ops_.push_back(std::move(op));
    return ops_.size() - 1;
}

FilmBackXformOp& CameraSample::operator[](const std::size_t& index)
{
    if (index >= ops_.size()) {
        ABCA_THROW("Invalid index in CameraSample: " << index);
    }
    return ops_[index];
}

const FilmBackXformOp& CameraSample::operator[](const std::size_t& index) const
{
    return const_cast<CameraSample&>(*this)[index];
}

FilmBackXformOp CameraSample::getOp(std::size_t index) const
{
    return (*this)[index];
}

M33d CameraSample::getFilmBackMatrix() const
{
    M33d matrix;
    for (const FilmBackXformOp& op : ops_) {
        matrix = op.transform() * matrix;
    }
    return matrix;
}

std::size_t CameraSample::getNumOpChannels() const
{
    std::size_t count = 0;
    for (const FilmBackXformOp& op : ops_) {
        count += op.getNumChannels();
    }
    return count;
}

void CameraSample::reset()
{
    core_ = default_core;
    child_bounds_.makeEmpty();
    ops_.clear();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
