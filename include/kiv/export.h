#pragma once

/// Marks what the library offers to other shared objects: classes with virtual functions,
/// exceptions and free functions. Everything else stays hidden.
#if defined(__GNUC__)
#define KIV_EXPORT __attribute__((visibility("default")))
#else
#define KIV_EXPORT
#endif
