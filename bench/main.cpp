// vexel_bench: measures the library, and what it is held against, in one run.
//
//   vexel_bench [ARGS]           ARGS go to Google Benchmark
//   vexel_bench --prepare=DIR    writes the files for comparing whole processes and ends

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <array>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "flat_page.h"
#include "page_input.h"
#include "platform/host.h"
#include "scale.h"
#include "table.h"

namespace {

namespace fs = std::filesystem;

class TemporaryFolder {
 public:
  TemporaryFolder() : path_((fs::temp_directory_path() / "vexel-bench-XXXXXX").string()) {
    if (::mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no temporary folder");
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& GetPath() const { return path_; }

 private:
  std::string path_;
};

// Work that ends in a box is not the work that is meant to be measured.
class StrictHost : public CHost {
 public:
  int ShowBox(const CString& text, unsigned) override {
    throw std::runtime_error(text.GetString());
  }
};

void Prepare(const fs::path& folder) {
  vexel::SetWorkFolder(folder);
  for (const int copies : {1, 16, 32}) {
    const auto page = vexel::MakeFlatPage(vexel::GetPageInput(copies));
    vexel::WriteFlatPage(page, vexel::WorkFile("page-" + std::to_string(copies)).string());
  }
}

void Measure(std::vector<char*> arguments) {
  // What the user gives stands behind and wins. Interleaved, since the speed of a machine drifts
  // while a run lasts, and what is compared should have seen the same of it.
  std::array<std::string, 3> ours = {"--benchmark_repetitions=7", "--benchmark_min_time=0.05",
                                     "--benchmark_enable_random_interleaving=true"};
  arguments.insert(arguments.begin() + 1, {ours[0].data(), ours[1].data(), ours[2].data()});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
    throw std::runtime_error("--help tells the arguments");
  }
  const TemporaryFolder folder;
  vexel::SetWorkFolder(folder.GetPath());
  vexel::TableReporter table;
  benchmark::RunSpecifiedBenchmarks(&table);
}

}  // namespace

int main(int count, char** arguments) {
  constexpr std::string_view kPrepare = "--prepare=";
  StrictHost host;
  CHost::SetCurrent(&host);
  try {
    if (count == 2 && std::string_view(arguments[1]).starts_with(kPrepare)) {
      Prepare(arguments[1] + kPrepare.size());
    } else {
      Measure({arguments, arguments + count});
    }
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "vexel_bench: " << failure.what() << '\n';
    return 1;
  }
}
