// Memory that fails on command, for a process of tests and for programs that it starts.

#ifndef VEXEL_TESTS_FAULTS_MEMORY_FAILING_MEMORY_H_
#define VEXEL_TESTS_FAULTS_MEMORY_FAILING_MEMORY_H_

namespace vexel::test {

// No allocation fails, that of one number does, or all from that number on do.
enum class Failing { none, once, forGood };

// Counts the allocations of all threads from 1 on, from now on, and lets them fail so.
void FailMemory(Failing failing, long number) noexcept;

// How many there have been since then.
long CountOfAllocations() noexcept;

// What tells the same to a program that has the memory loaded before all else: "once 12" or
// "forGood 12". With "none FILE" the program writes the number of its allocations to a file.
inline constexpr const char* kFailingVariable = "VEXEL_TEST_FAILING_MEMORY";

}  // namespace vexel::test

#endif  // VEXEL_TESTS_FAULTS_MEMORY_FAILING_MEMORY_H_
