#include "frame_rate.h"

#include "time_sampling_info.h"

#include <Alembic/Abc/ArchiveInfo.h>

double find_frame_rate(const ArchiveSession& session)
{
    Alembic::Abc::IArchive archive = session.get_archive();
    std::string application, version, date, description;
    std::uint32_t number = 0;
    double fps = 0.0;
    Alembic::Abc::GetArchiveInfo(archive, application, version, number, date, description, fps);
    if (fps > 0.0) return fps;
    if (const double rate = find_apparent_frame_rate(archive); rate > 0.0) return rate;
    throw session.error("the archive tells no frame rate. Give one with --fps.");
}

double find_apparent_frame_rate(Alembic::Abc::IArchive& archive)
{
    // The default sampling comes last: it is there in every archive, used or not.
    const std::uint32_t sampling_count = archive.getNumTimeSamplings();
    double still_rate = 0.0; // of samplings that nothing moves on
    for (std::uint32_t i = 1; i <= sampling_count; ++i) {
        const TimeSamplingInfo sampling(archive, i % sampling_count);
        if (!sampling.tells_frame_rate()) continue;
        if (sampling.max_sample_count > 1) return sampling.frame_rate;
        if (still_rate == 0.0) still_rate = sampling.frame_rate;
    }
    return still_rate;
}
