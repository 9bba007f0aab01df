#pragma once

// OVELDRA_EXPORT marks what leaves the shared library. House libraries are built with OVELDRA_BUILDING.
#if defined(_WIN32)
#if defined(OVELDRA_BUILDING)
#define OVELDRA_EXPORT __declspec(dllexport)
#else
#define OVELDRA_EXPORT __declspec(dllimport)
#endif
#else
#define OVELDRA_EXPORT __attribute__((visibility("default")))
#endif
