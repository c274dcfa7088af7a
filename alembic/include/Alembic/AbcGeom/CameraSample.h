/// One sample of a camera: sixteen numbers and a stack of film back operations.
#pragma once

#include <Alembic/AbcGeom/FilmBackXformOp.h>

#include <array>
#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT CameraSample
{
public:
    typedef CameraSample this_type;

    /// The defaults that stand beside the getters.
    CameraSample();

    /// The defaults, with squeeze, offsets and vertical aperture such that getScreenWindow() gives the window back. The
    /// window must have a width.
    CameraSample(double top, double bottom, double left, double right);

    /// The edges of the picture, as half widths of the unsqueezed film back: lens squeeze, overscan, film back
    /// operations, then the film offsets.
    void getScreenWindow(double& top, double& bottom, double& left, double& right) const;

    double getFocalLength() const { return core_[0]; }          ///< millimetres; 35
    double getHorizontalAperture() const { return core_[1]; }   ///< centimetres; 3.6
    double getHorizontalFilmOffset() const { return core_[2]; } ///< centimetres; 0
    double getVerticalAperture() const { return core_[3]; }     ///< centimetres; 2.4
    double getVerticalFilmOffset() const { return core_[4]; }   ///< centimetres; 0
    double getLensSqueezeRatio() const { return core_[5]; }     ///< width over height of what the lens squeezes; 1
    double getOverScanLeft() const { return core_[6]; }         ///< fraction of the screen window; 0
    double getOverScanRight() const { return core_[7]; }        ///< fraction of the screen window; 0
    double getOverScanTop() const { return core_[8]; }          ///< fraction of the screen window; 0
    double getOverScanBottom() const { return core_[9]; }       ///< fraction of the screen window; 0
    double getFStop() const { return core_[10]; }               ///< 5.6
    double getFocusDistance() const { return core_[11]; }       ///< centimetres; 5
    double getShutterOpen() const { return core_[12]; }         ///< seconds from the frame; 0
    double getShutterClose() const { return core_[13]; }        ///< seconds from the frame; 1/48
    double getNearClippingPlane() const { return core_[14]; }   ///< centimetres; 0.1
    double getFarClippingPlane() const { return core_[15]; }    ///< centimetres; 100000

    void setFocalLength(double value) { core_[0] = value; }
    void setHorizontalAperture(double value) { core_[1] = value; }
    void setHorizontalFilmOffset(double value) { core_[2] = value; }
    void setVerticalAperture(double value) { core_[3] = value; }
    void setVerticalFilmOffset(double value) { core_[4] = value; }
    void setLensSqueezeRatio(double value) { core_[5] = value; }
    void setOverScanLeft(double value) { core_[6] = value; }
    void setOverScanRight(double value) { core_[7] = value; }
    void setOverScanTop(double value) { core_[8] = value; }
    void setOverScanBottom(double value) { core_[9] = value; }
    void setFStop(double value) { core_[10] = value; }
    void setFocusDistance(double value) { core_[11] = value; }
    void setShutterOpen(double value) { core_[12] = value; }
    void setShutterClose(double value) { core_[13] = value; }
    void setNearClippingPlane(double value) { core_[14] = value; }
    void setFarClippingPlane(double value) { core_[15] = value; }

    /// Bounds of the children; never filled by reading.
    Box3d getChildBounds() const { return child_bounds_; }
    void setChildBounds(const Box3d& bounds) { child_bounds_ = bounds; }

    /// The sixteen numbers above by index, in the order in which they are stored; throws for another index.
    double getCoreValue(std::size_t index) const;

    /// Horizontal, degrees.
    double getFieldOfView() const;

    /// Film back operations, the first outermost. addOp returns the new one's index; an index out of range throws.
    std::size_t addOp(FilmBackXformOp op);
    FilmBackXformOp getOp(std::size_t index) const;
    FilmBackXformOp& operator[](const std::size_t& index);
    const FilmBackXformOp& operator[](const std::size_t& index) const;
    /// Their product, for row vectors.
    M33d getFilmBackMatrix() const;
    std::size_t getNumOps() const { return ops_.size(); }
    std::size_t getNumOpChannels() const;

    /// The defaults, without operations.
    void reset();

private:
    friend class ICameraSchema;

    std::array<double, 16> core_;
    Box3d child_bounds_;
    std::vector<FilmBackXformOp> ops_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
