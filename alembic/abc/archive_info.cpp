/// What an archive tells about its making, and the time it spans.
#include <Alembic/Abc/ArchiveInfo.h>

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <ctime>
#include <utility>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// Now, as ctime() writes it, without its newline; independent of the locale.
std::string date_text()
{
    const std::time_t now = std::time(nullptr);
    char text[32] = "";
    if (!ctime_r(&now, text)) return std::string();
    std::string date = text;
    while (!date.empty() && date.back() == '\n')
        date.pop_back();
    return date;
}

/// With six decimals and a point, whatever the locale.
std::string fixed_text(double value)
{
    char text[512]; // the greatest double has 309 digits before the point
    const std::to_chars_result end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 6);
    return std::string(text, end.ptr);
}

/// First and last time of the samples on a sampling; false when there are none.
bool time_range(IArchive& archive, uint32_t sampling, index_t count, double& first, double& last)
{
    const AbcA::TimeSamplingPtr times = archive.getTimeSampling(sampling);
    if (!times || count < 1) return false;
    // A file may claim more samples than an acyclic sampling has times.
    if (times->getTimeSamplingType().isAcyclic()) {
        count = std::min(count, static_cast<index_t>(times->getNumStoredTimes()));
        if (count < 1) return false;
    }
    first = times->getSampleTime(0);
    last = times->getSampleTime(count - 1);
    return true;
}

} // namespace

AbcA::MetaData archive_info_metadata(const std::string& application, const std::string& description, const double* fps,
                                     const Argument& arg0, const Argument& arg1)
{
    AbcA::MetaData meta_data = GetMetaData(arg0, arg1);
    meta_data.set(kApplicationNameKey, application);
    meta_data.set(kDateWrittenKey, date_text());
    meta_data.set(kUserDescriptionKey, description);
    if (fps && *fps > 0.0) meta_data.set(kDCCFPSKey, fixed_text(*fps));
    return meta_data;
}

void GetArchiveInfo(IArchive& archive, std::string& applicationWriter, std::string& alembicVersion,
                    uint32_t& alembicApiVersion, std::string& dateWritten, std::string& userDescription)
{
    double fps = 0.0;
    GetArchiveInfo(archive, applicationWriter, alembicVersion, alembicApiVersion, dateWritten, userDescription, fps);
}

void GetArchiveInfo(IArchive& archive, std::string& applicationWriter, std::string& alembicVersion,
                    uint32_t& alembicApiVersion, std::string& dateWritten, std::string& userDescription, double& fps)
{
    if (!archive.valid()) return;
    const AbcA::MetaData meta_data = archive.getTop().getMetaData();
    applicationWriter = meta_data.get(kApplicationNameKey);
    alembicVersion = meta_data.get("_ai_AlembicVersion");
    alembicApiVersion = static_cast<uint32_t>(archive.getArchiveVersion());
    dateWritten = meta_data.get(kDateWrittenKey);
    userDescription = meta_data.get(kUserDescriptionKey);
    const std::string fps_text = meta_data.get(kDCCFPSKey);
    fps = 0.0;
    std::from_chars(fps_text.data(), fps_text.data() + fps_text.size(), fps);
}

void GetArchiveStartAndEndTime(IArchive& archive, double& startTime, double& endTime)
{
    // Ranges of the samplings with several samples, of those with one, and of the default sampling.
    std::pair<double, double> ranges[3] = {{DBL_MAX, -DBL_MAX}, {DBL_MAX, -DBL_MAX}, {DBL_MAX, -DBL_MAX}};
    const uint32_t sampling_count = archive.getNumTimeSamplings();
    for (uint32_t i = 0; i < sampling_count; ++i) {
        const index_t count = archive.getMaxNumSamplesForTimeSamplingIndex(i);
        double first = 0.0, last = 0.0;
        if (count == INDEX_UNKNOWN || !time_range(archive, i, count, first, last)) continue;
        std::pair<double, double>& range = ranges[i == 0 ? 2 : count > 1 ? 0 : 1];
        range.first = std::min(range.first, first);
        range.second = std::max(range.second, last);
    }
    startTime = DBL_MAX;
    endTime = -DBL_MAX;
    for (const std::pair<double, double>& range : ranges) {
        if (range.first > range.second) continue;
        startTime = range.first;
        endTime = range.second;
        return;
    }
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
