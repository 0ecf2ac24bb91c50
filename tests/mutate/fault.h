// Included before every source of a copy with faults planted: tells which of them is switched on.

#ifndef VEXEL_TESTS_MUTATE_FAULT_H_
#define VEXEL_TESTS_MUTATE_FAULT_H_

#include <cstdlib>

// True for the number that the environment named when the program started.
inline bool vexel_fault(int number) noexcept {
  static const int chosen = [] {
    const char* text = std::getenv("VEXEL_FAULT");
    return text == nullptr ? 0 : std::atoi(text);
  }();
  return number == chosen;
}

#endif  // VEXEL_TESTS_MUTATE_FAULT_H_
