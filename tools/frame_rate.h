/// The frame rate of an archive.
#pragma once

#include "archive_session.h"

/// Frames a second, as the archive says or as its time samplings look like. Throws ToolError when neither tells.
double find_frame_rate(const ArchiveSession& session);

/// Frames a second as the time samplings of an archive look like, those with several samples first; 0 when none tells.
double find_apparent_frame_rate(Alembic::Abc::IArchive& archive);
