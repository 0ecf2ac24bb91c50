#include "table.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
#include <fstream>
#include <initializer_list>
#include <iomanip>
#include <iostream>
#include <string_view>

#include "scale.h"
#include "vexel/version.h"

namespace vexel {

namespace {

constexpr int kNameWidth = 42;
constexpr int kColumnWidth = 12;

#ifdef __OPTIMIZE__
constexpr bool kOptimized = true;
#else
constexpr bool kOptimized = false;
#endif

#ifdef __clang__
constexpr std::string_view kCompiler = "clang++ " __clang_version__;
#else
constexpr std::string_view kCompiler = "g++ " __VERSION__;
#endif

// Two numbers measured in one run, the first over the second.
struct Ratio {
  const char* what;
  const char* over;
  const char* under;
  const char* wanted;
};
constexpr std::array kRatios = {
    Ratio{"from_chars loop / text map load", "FloorFromChars/1", "TextMapLoad/1", ">= 0.4"},
    Ratio{"text / compiled load", "TextMapLoad/1", "CompiledLoad/1", ">= 20"},
    Ratio{"compiled load / floor", "CompiledLoad/1", "FloorCompiled/1", "<= 3"},
    Ratio{"compiled load / floor, 32x", "CompiledLoad/32", "FloorCompiled/32", "<= 3"},
    Ratio{"the same with floats", "CompiledLoadFloats/1", "FloorCompiledFloats/1", "<= 3"},
    Ratio{"further page / plain gd", "FurtherPage/1", "FloorGdPage/1", "<= 0.7"},
    Ratio{"further page / plain gd, 32x", "FurtherPage/32", "FloorGdPage/32", ""},
    Ratio{"save of the picture / gd", "GifSave/1", "FloorGdSave/1", "1"},
};

// What shall cost the same for an area however large the map is.
struct Growth {
  const char* small;
  const char* large;
};
constexpr std::array kGrowths = {
    Growth{"FloorCompiled/1", "FloorCompiled/16"}, Growth{"TextMapLoad/1", "TextMapLoad/16"},
    Growth{"CompiledLoad/1", "CompiledLoad/16"},   Growth{"DataRead/1", "DataRead/16"},
    Growth{"DataRead/32", "DataReadRows/1000000"}, Growth{"LinkRows/1", "LinkRows/16"},
    Growth{"Classify/1", "Classify/16"},           Growth{"DrawMap/1", "DrawMap/16"},
};

std::string ProcessorName() {
  std::ifstream info("/proc/cpuinfo");
  for (std::string line; std::getline(info, line);) {
    if (line.starts_with("model name")) return line.substr(line.find(": ") + 2);
  }
  return "unknown";
}

std::string Today() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%F %R", std::localtime(&now));
  return text.data();
}

void PrintName(std::string_view name) { std::cout << std::left << std::setw(kNameWidth) << name; }

void PrintNumber(double value, int decimals, std::string_view unit = "") {
  std::cout << std::right << std::setw(kColumnWidth) << std::fixed << std::setprecision(decimals)
            << value << unit;
}

void PrintTitles(std::string_view first, std::initializer_list<const char*> titles) {
  // A line feed in front takes no column.
  PrintName(first);
  if (first.starts_with('\n')) std::cout << ' ';
  for (const char* title : titles) {
    std::cout << std::right << std::setw(kColumnWidth) << title;
  }
  std::cout << '\n';
}

double CounterOf(const benchmark::BenchmarkReporter::Run& run, const char* name) {
  const auto counter = run.counters.find(name);
  return counter == run.counters.end() ? 0.0 : counter->second.value;
}

}  // namespace

bool TableReporter::ReportContext(const Context& context) {
  const Sample& sample = GetSample(1);
  const auto fact = [](std::string_view name) -> std::ostream& {
    return std::cout << std::left << std::setw(kColumnWidth) << name;
  };
  fact("vexel") << VEXEL_VERSION << '\n';
  fact("date") << Today() << '\n';
  fact("processor") << ProcessorName() << ", " << context.cpu_info.num_cpus << " cores\n";
  if (!context.cpu_info.load_avg.empty()) {
    fact("load") << context.cpu_info.load_avg.front() << '\n';
  }
  fact("compiler") << kCompiler << '\n';
  fact("build") << VEXEL_BUILD_TYPE << '\n';
  fact("data") << "us-counties, " << sample.areas << " areas, " << sample.rows << " rows, "
               << std::filesystem::file_size(sample.map) << " bytes of text; /N: in N copies\n";
  if (!kOptimized) std::cout << "\nWARNING: built without optimisation, the numbers mean nothing\n";
  std::cout << std::endl;
  return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
  std::vector<Run> measured;
  for (const Run& run : runs) {
    if (run.run_type == Run::RT_Iteration && !run.error_occurred) measured.push_back(run);
  }
  if (measured.empty()) return;
  std::sort(measured.begin(), measured.end(), [](const Run& a, const Run& b) {
    return a.GetAdjustedCPUTime() < b.GetAdjustedCPUTime();
  });
  const Run& median = measured[measured.size() / 2];
  // Repetitions may come in any order, and not one after the other.
  results_.push_back({.name = median.run_name.function_name + '/' + median.run_name.args,
                      .place = (median.family_index << 32U) + median.per_family_instance_index,
                      .milliseconds = median.GetAdjustedCPUTime(),
                      .least = measured.front().GetAdjustedCPUTime(),
                      .perArea = CounterOf(median, "per_area"),
                      .bytesPerSecond = CounterOf(median, "bytes_per_second")});
}

void TableReporter::Finalize() {
  std::sort(results_.begin(), results_.end(),
            [](const Result& a, const Result& b) { return a.place < b.place; });
  PrintResults();
  PrintTitles("\nratio", {"measured", "wanted"});
  PrintRatios();
  PrintGrowth();
  PrintAreaLines();
}

const TableReporter::Result* TableReporter::Find(std::string_view name) const {
  const auto found = std::find_if(results_.begin(), results_.end(),
                                  [=](const Result& result) { return result.name == name; });
  return found == results_.end() ? nullptr : &*found;
}

void TableReporter::PrintResults() const {
  PrintTitles("benchmark", {"median ms", "least ms", "ns/area", "MB/s"});
  for (const Result& result : results_) {
    PrintName(result.name);
    PrintNumber(result.milliseconds, 3);
    PrintNumber(result.least, 3);
    if (result.perArea > 0.0 || result.bytesPerSecond > 0.0) PrintNumber(result.perArea * 1e9, 0);
    if (result.bytesPerSecond > 0.0) PrintNumber(result.bytesPerSecond * 1e-6, 0);
    std::cout << '\n';
  }
}

void TableReporter::PrintRatios() const {
  for (const Ratio& ratio : kRatios) {
    const Result* const over = Find(ratio.over);
    const Result* const under = Find(ratio.under);
    if (over == nullptr || under == nullptr) continue;
    PrintName(ratio.what);
    PrintNumber(over->milliseconds / under->milliseconds, 2, "      ");
    std::cout << ratio.wanted << '\n';
  }
}

void TableReporter::PrintGrowth() const {
  for (const Growth& growth : kGrowths) {
    const Result* const small = Find(growth.small);
    const Result* const large = Find(growth.large);
    if (small == nullptr || large == nullptr) continue;
    PrintName("per area, " + std::string(growth.large) + " to " +
              std::string(growth.small).substr(std::string_view(growth.small).find('/')));
    const bool isFloor = std::string_view(growth.small).starts_with("Floor");
    PrintNumber(large->perArea / small->perArea, 2, isFloor ? "\n" : "      <= 1.5\n");
  }
}

// What the area lines add to drawing.
void TableReporter::PrintAreaLines() const {
  for (const char* size : {"/1", "/4", "/16", "/32"}) {
    const Result* const with = Find(std::string("DrawMapAreaLines") + size);
    const Result* const without = Find(std::string("DrawMap") + size);
    if (with == nullptr || without == nullptr) continue;
    const double milliseconds = with->milliseconds - without->milliseconds;
    const double bytes = with->bytesPerSecond * with->milliseconds * 1e-3;
    PrintName(std::string("area lines ") + size + ", ms and ns a byte");
    PrintNumber(milliseconds, 3);
    PrintNumber(milliseconds * 1e6 / bytes, 2, "\n");
  }
}

}  // namespace vexel
