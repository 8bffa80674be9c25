#pragma once

/// ORMALUX_API marks what the processing module exports, ORMALUXVIEW_API what the display module does.
#if defined(_WIN32)
#define ORMALUX_EXPORT __declspec(dllexport)
#define ORMALUX_IMPORT __declspec(dllimport)
#else
#define ORMALUX_EXPORT __attribute__((visibility("default")))
#define ORMALUX_IMPORT __attribute__((visibility("default")))
#endif

#if defined(ORMALUX_BUILDING)
#define ORMALUX_API ORMALUX_EXPORT
#elif defined(ORMALUX_STATIC_OBJECTS)
#define ORMALUX_API
#else
#define ORMALUX_API ORMALUX_IMPORT
#endif

#if defined(ORMALUXVIEW_BUILDING)
#define ORMALUXVIEW_API ORMALUX_EXPORT
#elif defined(ORMALUX_STATIC_OBJECTS)
#define ORMALUXVIEW_API
#else
#define ORMALUXVIEW_API ORMALUX_IMPORT
#endif
