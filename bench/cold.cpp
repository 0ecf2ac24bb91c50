// vexel_cold: compares whole processes. Runs the commands in turn, A B A B ..., and prints what
// they took. It keeps small: a process starts out with the peak memory of the one that started it.
//
//   vexel_cold ROUNDS NAME COMMAND... -- NAME COMMAND... [-- ...]

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <iomanip>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

extern char** environ;

namespace {

struct Command {
  std::string name;
  std::vector<char*> arguments;  // with a closing null
  std::vector<double> wall;      // ms
  std::vector<double> user;      // ms
  std::vector<double> system;    // ms
  std::vector<double> peak;      // MiB
};

std::vector<Command> ReadCommands(std::span<char*> words) {
  std::vector<Command> commands(1);
  for (char* word : words) {
    Command& command = commands.back();
    if (std::string_view(word) == "--") {
      commands.emplace_back();
    } else if (command.name.empty()) {
      command.name = word;
    } else {
      command.arguments.push_back(word);
    }
  }
  for (Command& command : commands) {
    if (command.arguments.empty()) throw std::runtime_error("a command is missing");
    command.arguments.push_back(nullptr);
  }
  return commands;
}

pid_t Start(const Command& command) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t child = -1;
  const int failure = posix_spawnp(&child, command.arguments.front(), &actions, nullptr,
                                   command.arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failure != 0) throw std::runtime_error("cannot start " + command.name);
  return child;
}

double Milliseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) * 1e-3;
}

void Run(Command& command) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  int status = 0;
  rusage usage{};
  if (wait4(Start(command), &status, 0, &usage) < 0 || status != 0) {
    throw std::runtime_error(command.name + " failed");
  }
  command.wall.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  command.user.push_back(Milliseconds(usage.ru_utime));
  command.system.push_back(Milliseconds(usage.ru_stime));
  command.peak.push_back(static_cast<double>(usage.ru_maxrss) / 1024.0);
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

double Least(const std::vector<double>& values) {
  return *std::min_element(values.begin(), values.end());
}

void Print(const std::vector<Command>& commands) {
  std::cout << std::left << std::setw(42) << "process" << std::right;
  for (const char* title : {"wall ms", "least", "user ms", "sys ms", "peak MiB", "wall ratio"}) {
    std::cout << std::setw(11) << title;
  }
  std::cout << '\n' << std::fixed << std::setprecision(2);
  for (const Command& command : commands) {
    std::cout << std::left << std::setw(42) << command.name << std::right;
    for (const double value :
         {Median(command.wall), Least(command.wall), Median(command.user), Median(command.system),
          Median(command.peak), Median(command.wall) / Median(commands.back().wall)}) {
      std::cout << std::setw(11) << value;
    }
    std::cout << '\n';
  }
}

}  // namespace

int main(int count, char** arguments) {
  try {
    const auto words = std::span(arguments, static_cast<std::size_t>(count));
    if (words.size() < 4) throw std::runtime_error("usage: ROUNDS NAME COMMAND... [-- ...]");
    const int rounds = std::max(1, std::atoi(words[1]));
    std::vector<Command> commands = ReadCommands(words.subspan(2));
    for (int i = 0; i < rounds; ++i) {
      for (Command& command : commands) Run(command);
    }
    Print(commands);
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "vexel_cold: " << failure.what() << '\n';
    return 1;
  }
}
