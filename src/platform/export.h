// Marks what the shared library shows to its hosts; everything else stays hidden.

#ifndef VEXEL_PLATFORM_EXPORT_H_
#define VEXEL_PLATFORM_EXPORT_H_

#define VEXEL_API __attribute__((visibility("default")))

#endif  // VEXEL_PLATFORM_EXPORT_H_
