/// Opening: what is checked before an archive is handed out, and what the archive tells of itself.
#include "input.h"

#include <Alembic/Abc/All.h>
#include <Alembic/AbcCoreOgawa/All.h>

#include <algorithm>
#include <sstream>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::istringstream first(input_bytes(data, size)), second(first.str());
    try {
        const auto reader = Alembic::AbcCoreOgawa::ReadArchive({&first, &second})("input");
        Alembic::Abc::IArchive archive(reader, Alembic::Abc::ErrorHandler::kQuietNoopPolicy);
        double start = 0.0, end = 0.0;
        Alembic::Abc::GetArchiveStartAndEndTime(archive, start, end);
        std::string application, library, date, text;
        std::uint32_t version = 0;
        Alembic::Abc::GetArchiveInfo(archive, application, library, version, date, text);
        for (std::uint32_t i = 0; i < std::min(archive.getNumTimeSamplings(), 100u); ++i)
            archive.getTimeSampling(i)->getNearIndex(0.5, 10);
        archive.getTop().getNumChildren();
    } catch (const std::exception&) {
    }
    return 0;
}
