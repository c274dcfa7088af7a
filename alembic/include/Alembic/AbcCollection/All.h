/// All of AbcCollection.
#pragma once

#include <Alembic/AbcCollection/ICollections.h>
#include <Alembic/AbcCollection/OCollections.h>
#include <Alembic/AbcCollection/SchemaInfoDeclarations.h>
