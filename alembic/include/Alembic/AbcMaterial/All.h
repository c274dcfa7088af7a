/// All of AbcMaterial.
#pragma once

#include <Alembic/AbcMaterial/IMaterial.h>
#include <Alembic/AbcMaterial/InternalUtil.h>
#include <Alembic/AbcMaterial/MaterialAssignment.h>
#include <Alembic/AbcMaterial/MaterialFlatten.h>
#include <Alembic/AbcMaterial/OMaterial.h>
#include <Alembic/AbcMaterial/SchemaInfoDeclarations.h>
