// What the kit says when it refuses something.

#ifndef VEXEL_TESTS_SUPPORT_REFUSAL_H_
#define VEXEL_TESTS_SUPPORT_REFUSAL_H_

#include <concepts>
#include <string>

#include "kit/request/error.h"

namespace vexel::test {

// The text of the Error that it throws; empty when it throws none.
template <std::invocable Act>
std::string Refusal(Act act) {
  try {
    act();
  } catch (const Error& error) {
    return error.what();
  }
  return "";
}

}  // namespace vexel::test

#endif  // VEXEL_TESTS_SUPPORT_REFUSAL_H_
