/// @file
/// Everything of the HDF5 back end.
#pragma once

#include <Alembic/AbcCoreHDF5/ReadWrite.h>
