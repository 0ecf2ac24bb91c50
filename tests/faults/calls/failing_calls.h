// Calls of the system that fail: in the program itself, or in any other that the shared object
// vexel_failing_calls is loaded into before all else.

#ifndef VEXEL_TESTS_FAULTS_CALLS_FAILING_CALLS_H_
#define VEXEL_TESTS_FAULTS_CALLS_FAILING_CALLS_H_

namespace vexel::test {

// "CALL WHAT FROM", counted from 1, of which only calls for regular files count; "" for nothing.
// CALL is read, write, close (of what is written) or rename. WHAT happens from that call on:
//   fails         each ends with EIO
//   interrupted   every second one ends with EINTR
//   cut           each writes half of what it should
// or at that call alone:
//   signal        SIGINT comes
//   waits         it takes half a second
void FailCalls(const char* order) noexcept;

// The variable of the environment from which another program takes its order.
inline constexpr const char* kFailingCalls = "VEXEL_FAILING_CALLS";

}  // namespace vexel::test

#endif  // VEXEL_TESTS_FAULTS_CALLS_FAILING_CALLS_H_
