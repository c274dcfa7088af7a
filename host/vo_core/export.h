/// Export macro of all host libraries: what carries it is visible to callers, in every shared library alike.
#pragma once

#define VO_HOST_EXPORT __attribute__((visibility("default")))
