/// @file
/// Everything of the Ogawa back end.
#pragma once

#include <Alembic/AbcCoreOgawa/ReadWrite.h>
