/// One operation on a camera's film back.
#include <Alembic/AbcGeom/FilmBackXformOp.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

const char* const type_letters = "stm"; // by type: scale, translate, matrix

} // namespace

FilmBackXformOp::FilmBackXformOp() = default;

FilmBackXformOp::FilmBackXformOp(const FilmBackXformOperationType type, const std::string& hint)
    : type_(type)
    , hint_(hint)
{
    if (type_ < kScaleFilmBackOperation || type_ > kMatrixFilmBackOperation) {
        ABCA_THROW("Unknown type of film back operation: " << int(type_));
    }
    if (isScaleOp()) {
        channels_[0] = channels_[1] = 1.0;
    } else if (isMatrixOp()) {
        channels_[0] = channels_[4] = channels_[8] = 1.0;
    }
}

FilmBackXformOp FilmBackXformOp::decode(const std::string& type_and_hint)
{
    FilmBackXformOperationType type = kTranslateFilmBackOperation;
    if (!type_and_hint.empty() && type_and_hint[0] == 's') {
        type = kScaleFilmBackOperation;
    } else if (!type_and_hint.empty() && type_and_hint[0] == 'm') {
        type = kMatrixFilmBackOperation;
    }
    return FilmBackXformOp(type, type_and_hint.empty() ? std::string() : type_and_hint.substr(1));
}

std::string FilmBackXformOp::getTypeAndHint() const
{
    return type_letters[type_] + hint_;
}

void FilmBackXformOp::check_channel(std::size_t index) const
{
    if (index >= getNumChannels()) {
        ABCA_THROW("Channel index " << index << " is out of range: a film back operation of type '"
                                    << type_letters[type_] << "' has " << getNumChannels() << " channels.");
    }
}

double FilmBackXformOp::getChannelValue(std::size_t index) const
{
    check_channel(index);
    return channels_[index];
}

void FilmBackXformOp::setChannelValue(std::size_t index, double value)
{
    check_channel(index);
    channels_[index] = value;
}

void FilmBackXformOp::setTranslate(const V2d& translation)
{
    if (!isTranslateOp()) {
        ABCA_THROW("Meaningless to set translate vector on non-translate op.");
    }
    channels_[0] = translation.x;
    channels_[1] = translation.y;
}

void FilmBackXformOp::setScale(const V2d& scale)
{
    if (!isScaleOp()) {
        ABCA_THROW("Meaningless to set scale vector on non-scale op.");
    }
    channels_[0] = scale.x;
    channels_[1] = scale.y;
}

void FilmBackXformOp::setMatrix(const M33d& matrix)
{
    if (!isMatrixOp()) {
        ABCA_THROW("Can't set matrix on non-matrix op.");
    }
    for (int i = 0; i < 9; ++i) {
        channels_[i] = matrix[i / 3][i % 3];
    }
}

V2d FilmBackXformOp::getTranslate() const
{
    if (!isTranslateOp()) {
        ABCA_THROW("Meaningless to get translate vector from non-translate op.");
    }
    return V2d(channels_[0], channels_[1]);
}

V2d FilmBackXformOp::getScale() const
{
    if (!isScaleOp()) {
        ABCA_THROW("Meaningless to get scale vector from non-scale op.");
    }
    return V2d(channels_[0], channels_[1]);
}

M33d FilmBackXformOp::getMatrix() const
{
    if (!isMatrixOp()) {
        ABCA_THROW("Can't get matrix from non-matrix op.");
    }
    return transform();
}

M33d FilmBackXformOp::transform() const
{
    M33d matrix;
    const V2d vector(channels_[0], channels_[1]);
    switch (type_) {
    case kScaleFilmBackOperation:
        matrix.setScale(vector);
        break;
    case kTranslateFilmBackOperation:
        matrix.setTranslation(vector);
        break;
    case kMatrixFilmBackOperation:
        for (int i = 0; i < 9; ++i) {
            matrix[i / 3][i % 3] = channels_[i];
        }
        break;
    }
    return matrix;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
