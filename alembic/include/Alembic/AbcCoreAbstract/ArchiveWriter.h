/// An archive that is being written, whatever its back end.
#pragma once

#include <Alembic/AbcCoreAbstract/ForwardDeclarations.h>
#include <Alembic/AbcCoreAbstract/Foundation.h>
#include <Alembic/AbcCoreAbstract/MetaData.h>
#include <Alembic/AbcCoreAbstract/TimeSampling.h>

#include <string>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

/// The file is finished when the last pointer to the archive, or to anything in it, goes.
class ALEMBIC_EXPORT ArchiveWriter : private Alembic::Util::noncopyable
{
public:
    virtual ~ArchiveWriter();

    virtual const std::string& getName() const = 0;
    virtual const MetaData& getMetaData() const = 0;
    virtual ObjectWriterPtr getTop() = 0;
    virtual ArchiveWriterPtr asArchivePtr() = 0;

    /// -1 for none, else 0 to 9; a hint that back ends may ignore.
    int8_t getCompressionHint() const { return compression_hint_; }
    void setCompressionHint(int8_t hint) { compression_hint_ = hint; }

    /// Index of an equal sampling, or of a new one. 0 is there from the start: TimeSampling().
    virtual uint32_t addTimeSampling(const TimeSampling& ts) = 0;
    /// Throws for an index that does not exist.
    virtual TimeSamplingPtr getTimeSampling(uint32_t index) = 0;
    virtual uint32_t getNumTimeSamplings() = 0;

    /// What is written for readers beside each sampling: see ArchiveReader.
    virtual index_t getMaxNumSamplesForTimeSamplingIndex(uint32_t index) = 0;
    virtual void setMaxNumSamplesForTimeSamplingIndex(uint32_t index, index_t maxIndex) = 0;

protected:
    ArchiveWriter() = default;

private:
    int8_t compression_hint_ = -1;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
