/// One operation on a camera's film back: its type, a free hint, and its numbers.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>

#include <array>
#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// Channels start as the identity. Members that ask for what the type has not throw Util::Exception, and so does a
/// channel index that is out of range.
class ALEMBIC_EXPORT FilmBackXformOp
{
public:
    typedef FilmBackXformOp this_type;

    /// A translation without hint.
    FilmBackXformOp();

    /// The hint is any text; it means what the writing application says.
    FilmBackXformOp(const FilmBackXformOperationType type, const std::string& hint);

    FilmBackXformOperationType getType() const { return type_; }
    std::string getHint() const { return hint_; }
    /// As stored: `t`, `s` or `m`, then the hint.
    std::string getTypeAndHint() const;

    /// 2 for translations and scales, 9 for a matrix.
    std::size_t getNumChannels() const { return type_ == kMatrixFilmBackOperation ? 9 : 2; }
    double getChannelValue(std::size_t index) const;
    void setChannelValue(std::size_t index, double value);

    void setTranslate(const V2d& translation);
    void setScale(const V2d& scale);
    void setMatrix(const M33d& matrix);

    V2d getTranslate() const;
    V2d getScale() const;
    M33d getMatrix() const;

    bool isTranslateOp() const { return type_ == kTranslateFilmBackOperation; }
    bool isScaleOp() const { return type_ == kScaleFilmBackOperation; }
    bool isMatrixOp() const { return type_ == kMatrixFilmBackOperation; }

private:
    friend class CameraSample;
    friend class ICameraSchema;

    /// From the stored text. Another first letter, or none, is a translation.
    static FilmBackXformOp decode(const std::string& type_and_hint);
    void check_channel(std::size_t index) const;
    /// The matrix that the operation stands for.
    M33d transform() const;

    FilmBackXformOperationType type_ = kTranslateFilmBackOperation;
    std::string hint_;
    std::array<double, 9> channels_{};
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
