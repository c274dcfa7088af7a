/// Marks what the library vo_abc_io exports; everything else is hidden.
#pragma once

#if defined(_WIN32)
#if defined(VO_ABC_IO_BUILDING)
#define VO_ABC_IO_EXPORT __declspec(dllexport)
#else
#define VO_ABC_IO_EXPORT __declspec(dllimport)
#endif
#else
#define VO_ABC_IO_EXPORT __attribute__((visibility("default")))
#endif
