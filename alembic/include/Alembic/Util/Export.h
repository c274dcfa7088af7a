/// Symbol visibility: everything is hidden unless it carries ALEMBIC_EXPORT.
#pragma once

#if defined(_WIN32)
#if defined(ALEMBIC_BUILDING)
#define ALEMBIC_EXPORT __declspec(dllexport)
#else
#define ALEMBIC_EXPORT __declspec(dllimport)
#endif
#else
#define ALEMBIC_EXPORT __attribute__((visibility("default")))
#endif
