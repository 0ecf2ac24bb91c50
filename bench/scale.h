// Maps and data files of any size to measure with, made from the sample counties.

#ifndef VEXEL_BENCH_SCALE_H_
#define VEXEL_BENCH_SCALE_H_

#include <filesystem>
#include <string>

namespace vexel {

// Where generated and written files go. The folder is the caller's to make and to remove.
void SetWorkFolder(const std::filesystem::path& folder);
std::filesystem::path WorkFile(const std::string& name);

// The counties of the samples, so many times side by side: every copy has keys of its own below
// its number, so that the tree is one level deeper than that of the sample. One copy is the plain
// sample.
struct Sample {
  std::filesystem::path map;       // text
  std::filesystem::path compiled;  // the same, with both halves
  std::filesystem::path data;      // one row for each state and county
  int copies = 0;
  int areas = 0;  // all nodes of the map
  int rows = 0;
};

// Made on first use, once for each number of copies.
const Sample& GetSample(int copies);

// A data file for the sample's map with at least so many rows: its own, over and over.
std::filesystem::path MakeLongDataFile(const Sample& sample, int rows);

std::string ReadWholeFile(const std::filesystem::path& path);

}  // namespace vexel

#endif  // VEXEL_BENCH_SCALE_H_
