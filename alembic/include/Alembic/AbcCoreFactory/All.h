/// Everything in Alembic::AbcCoreFactory.
#pragma once

#include <Alembic/AbcCoreFactory/IFactory.h>
