/// Everything in Alembic::AbcCoreAbstract.
#pragma once

#include <Alembic/AbcCoreAbstract/ArchiveReader.h>
#include <Alembic/AbcCoreAbstract/ArchiveWriter.h>
#include <Alembic/AbcCoreAbstract/ArrayPropertyReader.h>
#include <Alembic/AbcCoreAbstract/ArrayPropertyWriter.h>
#include <Alembic/AbcCoreAbstract/ArraySample.h>
#include <Alembic/AbcCoreAbstract/ArraySampleKey.h>
#include <Alembic/AbcCoreAbstract/BasePropertyReader.h>
#include <Alembic/AbcCoreAbstract/BasePropertyWriter.h>
#include <Alembic/AbcCoreAbstract/CompoundPropertyReader.h>
#include <Alembic/AbcCoreAbstract/CompoundPropertyWriter.h>
#include <Alembic/AbcCoreAbstract/DataType.h>
#include <Alembic/AbcCoreAbstract/ForwardDeclarations.h>
#include <Alembic/AbcCoreAbstract/Foundation.h>
#include <Alembic/AbcCoreAbstract/MetaData.h>
#include <Alembic/AbcCoreAbstract/ObjectHeader.h>
#include <Alembic/AbcCoreAbstract/ObjectReader.h>
#include <Alembic/AbcCoreAbstract/ObjectWriter.h>
#include <Alembic/AbcCoreAbstract/PropertyHeader.h>
#include <Alembic/AbcCoreAbstract/ReadArraySampleCache.h>
#include <Alembic/AbcCoreAbstract/ScalarPropertyReader.h>
#include <Alembic/AbcCoreAbstract/ScalarPropertyWriter.h>
#include <Alembic/AbcCoreAbstract/ScalarSample.h>
#include <Alembic/AbcCoreAbstract/TimeSampling.h>
#include <Alembic/AbcCoreAbstract/TimeSamplingType.h>
