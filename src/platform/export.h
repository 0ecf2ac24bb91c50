// What every public header begins with: the mark of all that the shared library shows to its hosts
// (everything else stays hidden), and a plain word to whoever compiles for an older language.

#ifndef VEXEL_PLATFORM_EXPORT_H_
#define VEXEL_PLATFORM_EXPORT_H_

#if __cplusplus < 202002L
#error "Vexel's headers need C++20 (compile with -std=c++20)"
#endif

#define VEXEL_API __attribute__((visibility("default")))

#endif  // VEXEL_PLATFORM_EXPORT_H_
