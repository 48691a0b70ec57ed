// QV_EXPORT marks what the shared libraries offer; all else in them is hidden.
#pragma once

#if defined(__GNUC__)
#define QV_EXPORT __attribute__((visibility("default")))
#else
#define QV_EXPORT
#endif
