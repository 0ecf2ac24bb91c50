// vexel_floor: a page by plain gd calls, as a process that `vexel render` is held against.
//
//   vexel_floor PAGE OUT.gif             draws and encodes once
//   vexel_floor --loop N PAGE OUT.gif    N times, and tells what fill, outline and encoding take

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <iomanip>
#include <iostream>
#include <span>
#include <string_view>
#include <vector>

#include "flat_page.h"

namespace {

template <typename Work>
void Time(const char* what, int rounds, Work work) {
  using Clock = std::chrono::steady_clock;
  std::vector<double> times;
  for (int i = 0; i < rounds; ++i) {
    const Clock::time_point start = Clock::now();
    work();
    times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  }
  std::sort(times.begin(), times.end());
  std::cout << std::left << std::setw(10) << what << std::right << std::fixed
            << std::setprecision(2) << std::setw(10) << times[times.size() / 2] << std::setw(10)
            << times.front() << '\n';
}

int Run(std::span<char*> arguments) {
  int rounds = 0;
  if (arguments.size() == 4 && std::string_view(arguments[0]) == "--loop") {
    rounds = std::max(1, std::atoi(arguments[1]));
    arguments = arguments.subspan(2);
  }
  if (arguments.size() != 2) {
    std::cerr << "usage: vexel_floor [--loop N] PAGE OUT.gif\n";
    return 2;
  }
  vexel::FlatPage page = vexel::ReadFlatPage(arguments[0]);
  vexel::GdCanvas canvas(page);
  canvas.Draw();
  canvas.Save(arguments[1]);
  if (rounds > 0) {
    std::cout << "ms            median       min\n";
    Time("fill", rounds, [&] { canvas.Fill(); });
    Time("outline", rounds, [&] { canvas.Outline(); });
    Time("encode", rounds, [&] { canvas.Save(arguments[1]); });
  }
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  try {
    return Run(std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
  } catch (const std::exception& failure) {
    std::cerr << "vexel_floor: " << failure.what() << '\n';
    return 1;
  }
}
