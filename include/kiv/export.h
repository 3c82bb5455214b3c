#pragma once

/// Marks what the library offers to other shared objects: classes with virtual functions,
/// exceptions and free functions. Everything else stays hidden.
///
/// `KIV_HIDDEN` keeps a private member of such a class, or a private class in it, inside the
/// library. No inline function may call it.
#if defined(__GNUC__)
#define KIV_EXPORT __attribute__((visibility("default")))
#define KIV_HIDDEN __attribute__((visibility("hidden")))
#else
#define KIV_EXPORT
#define KIV_HIDDEN
#endif
