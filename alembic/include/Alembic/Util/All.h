/// Everything in Alembic::Util.
#pragma once

#include <Alembic/Util/Config.h>
#include <Alembic/Util/Digest.h>
#include <Alembic/Util/Dimensions.h>
#include <Alembic/Util/Exception.h>
#include <Alembic/Util/Export.h>
#include <Alembic/Util/Foundation.h>
#include <Alembic/Util/Murmur3.h>
#include <Alembic/Util/Naming.h>
#include <Alembic/Util/OperatorBool.h>
#include <Alembic/Util/PlainOldDataType.h>
#include <Alembic/Util/SpookyV2.h>
#include <Alembic/Util/TokenMap.h>
