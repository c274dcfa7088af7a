/// The frame rate of an archive.
#pragma once

#include "archive_session.h"

/// Frames a second, as the archive says or as its samples look like. Throws ToolError when neither tells.
double find_frame_rate(const ArchiveSession& session);

/// Frames a second as the samples of an archive look like; 0 when they do not tell.
double find_apparent_frame_rate(Alembic::Abc::IArchive& archive);
