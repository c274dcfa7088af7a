/// Cameras' samples and film back operations: values only, no files.
#include <Alembic/AbcGeom/CameraSample.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace Alembic::AbcGeom;

TEST(CameraSample, ItsWindowIsTheOneItWasMadeFrom)
{
    std::mt19937 engine(7);
    std::uniform_real_distribution<double> edge(-3.0, 3.0), size(0.1, 5.0);
    for (int i = 0; i < 200; ++i) {
        const double left = edge(engine), right = left + size(engine);
        const double bottom = edge(engine), top = bottom + size(engine);
        const CameraSample camera(top, bottom, left, right);
        double t = 0, b = 0, l = 0, r = 0;
        camera.getScreenWindow(t, b, l, r);
        EXPECT_NEAR(t, top, 1e-12) << "case " << i;
        EXPECT_NEAR(b, bottom, 1e-12) << "case " << i;
        EXPECT_NEAR(l, left, 1e-12) << "case " << i;
        EXPECT_NEAR(r, right, 1e-12) << "case " << i;
        EXPECT_EQ(camera.getFocalLength(), 35.0);
    }
}

TEST(CameraSample, OverscanAndFilmBackWidenTheWindow)
{
    CameraSample camera;
    camera.setVerticalAperture(3.6);
    camera.setOverScanLeft(0.1);
    camera.setOverScanRight(0.2);
    camera.setOverScanTop(0.3);
    camera.setOverScanBottom(0.4);
    FilmBackXformOp grow(kScaleFilmBackOperation, "fit");
    grow.setScale(V2d(2.0, 3.0));
    FilmBackXformOp move(kTranslateFilmBackOperation, "offset");
    move.setTranslate(V2d(0.5, -0.5));
    camera.addOp(move);
    camera.addOp(grow);
    camera.setHorizontalFilmOffset(1.8); // half the aperture moves by one half width
    double top = 0, bottom = 0, left = 0, right = 0;
    camera.getScreenWindow(top, bottom, left, right);
    EXPECT_NEAR(left, -1.1 * 2.0 + 0.5 + 1.0, 1e-12);
    EXPECT_NEAR(right, 1.2 * 2.0 + 0.5 + 1.0, 1e-12);
    EXPECT_NEAR(top, 1.3 * 3.0 - 0.5, 1e-12);
    EXPECT_NEAR(bottom, -1.4 * 3.0 - 0.5, 1e-12);
}

TEST(CameraSample, FieldOfViewFollowsTheFocalLength)
{
    for (double degrees = 5.0; degrees < 175.0; degrees += 5.0) {
        CameraSample camera;
        camera.setFocalLength(36.0 / (2.0 * std::tan(degrees * M_PI / 360.0))); // 3.6 cm are 36 mm
        EXPECT_NEAR(camera.getFieldOfView(), degrees, 1e-10);
    }
}

TEST(FilmBackXformOp, ChannelsAndTypesAreChecked)
{
    for (const auto type : {kScaleFilmBackOperation, kTranslateFilmBackOperation, kMatrixFilmBackOperation}) {
        FilmBackXformOp op(type, "any text");
        EXPECT_THROW(op.getChannelValue(op.getNumChannels()), Alembic::Util::Exception);
        EXPECT_THROW(op.setChannelValue(op.getNumChannels(), 0.0), Alembic::Util::Exception);
        const int accepted = (op.isScaleOp() ? 1 : 0) + (op.isTranslateOp() ? 1 : 0) + (op.isMatrixOp() ? 1 : 0);
        EXPECT_EQ(accepted, 1);
        CameraSample camera;
        camera.addOp(op);
        EXPECT_EQ(camera.getFilmBackMatrix(), M33d()) << "operations start as the identity";
        EXPECT_THROW(camera[1], Alembic::Util::Exception);
    }
    EXPECT_THROW(FilmBackXformOp(kMatrixFilmBackOperation, "").setScale(V2d(1.0)), Alembic::Util::Exception);
    EXPECT_THROW(FilmBackXformOp(static_cast<FilmBackXformOperationType>(9), ""), Alembic::Util::Exception);
}
