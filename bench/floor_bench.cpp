// The floors: the least that could be done for the same result, to hold the library against.

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "flat_page.h"
#include "measure.h"
#include "page_input.h"
#include "platform/geometry.h"

namespace {

using benchmark::State;
using vexel::AllSizes;
using vexel::Sample;
using vexel::SampleOf;

// The coordinates of a map, in the order of the file.
std::vector<std::string_view> FindCoordinates(std::string_view text) {
  std::vector<std::string_view> numbers;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (line.empty() || std::string_view("-0123456789").find(line.front()) == line.npos) continue;
    const std::size_t blank = line.find(' ');
    numbers.push_back(line.substr(0, blank));
    numbers.push_back(line.substr(blank + 1));
  }
  return numbers;
}

// To TextMapLoad: nothing but the numbers of the file, which is in memory.
void FloorFromChars(State& state) {
  const Sample& sample = SampleOf(state);
  const std::string text = vexel::ReadWholeFile(sample.map);
  const std::vector<std::string_view> numbers = FindCoordinates(text);
  for (auto _ : state) {
    double sum = 0.0;
    for (const std::string_view number : numbers) {
      double value = 0.0;
      std::from_chars(number.data(), number.data() + number.size(), value);
      sum += value;
    }
    benchmark::DoNotOptimize(sum);
  }
  vexel::CountAreas(state, sample.areas);
  vexel::CountBytes(state, text.size());
}
BENCHMARK(FloorFromChars)->Apply(AllSizes);

struct PlainPoint {
  std::int32_t x;
  std::int32_t y;
};

struct PlainPolygon {
  std::vector<PlainPoint> points;
  std::vector<PlainPoint> floats;  // kept as bits
  std::int32_t hole = 0;
};

struct PlainNode {
  std::string name;
  std::array<std::int32_t, 4> bound{};
  std::array<std::int32_t, 8> key{};
  std::vector<PlainPolygon> polygons;
  std::vector<PlainNode> children;
};

// Reads a compiled map that is known to be whole.
class PlainReader {
 public:
  explicit PlainReader(const char* bytes) : at_(bytes) {}

  void TakeHead() {
    constexpr int kTagAndTwoNumbers = 18;
    constexpr int kNames = 8;
    at_ += kTagAndTwoNumbers;
    for (int i = 0; i < kNames; ++i) TakeText();
  }

  void TakeNode(PlainNode& node, bool floats) {
    node.name = TakeText();
    Take(node.bound);
    if (!floats) TakeNumber();  // the angle
    TakeNumber();
    Take(node.key);
    node.polygons.resize(TakeCount());
    for (PlainPolygon& polygon : node.polygons) {
      std::vector<PlainPoint>& points = floats ? polygon.floats : polygon.points;
      points.resize(TakeCount());
      Copy(points.data(), points.size() * sizeof(PlainPoint));
      polygon.hole = TakeNumber();
    }
    node.children.resize(TakeCount());
    for (PlainNode& child : node.children) TakeNode(child, floats);
  }

  const char* GetPosition() const { return at_; }

 private:
  std::string_view TakeText() {
    const auto length = static_cast<unsigned char>(*at_);
    const std::string_view text(at_ + 1, length);
    at_ += 1 + length;
    return text;
  }
  std::int32_t TakeNumber() {
    std::int32_t number = 0;
    Copy(&number, sizeof(number));
    return number;
  }
  std::size_t TakeCount() { return static_cast<std::size_t>(TakeNumber()); }
  template <typename Numbers>
  void Take(Numbers& numbers) {
    Copy(numbers.data(), sizeof(numbers));
  }
  void Copy(void* to, std::size_t count) {
    if (count > 0) std::memcpy(to, at_, count);
    at_ += count;
  }

  const char* at_;
};

std::unique_ptr<PlainNode> ReadPlain(const std::filesystem::path& path, std::size_t length,
                                     bool floats) {
  const auto bytes = std::make_unique_for_overwrite<char[]>(length);
  std::ifstream file(path, std::ios::binary);
  file.read(bytes.get(), static_cast<std::streamsize>(length));
  PlainReader reader(bytes.get());
  reader.TakeHead();
  auto root = std::make_unique<PlainNode>();
  reader.TakeNode(*root, false);
  if (floats) reader.TakeNode(*root, true);
  return root;
}

std::size_t LengthOfIntegerHalf(const std::filesystem::path& path) {
  const std::string bytes = vexel::ReadWholeFile(path);
  PlainReader reader(bytes.data());
  reader.TakeHead();
  PlainNode root;
  reader.TakeNode(root, false);
  return static_cast<std::size_t>(reader.GetPosition() - bytes.data());
}

// To CompiledLoad.
void FloorCompiled(State& state) {
  const Sample& sample = SampleOf(state);
  const std::size_t length = LengthOfIntegerHalf(sample.compiled);
  vexel::MeasureMaking(state, [&] { return ReadPlain(sample.compiled, length, false); });
  vexel::CountAreas(state, sample.areas);
  vexel::CountBytes(state, length);
}
BENCHMARK(FloorCompiled)->Apply(AllSizes);

// To CompiledLoadFloats.
void FloorCompiledFloats(State& state) {
  const Sample& sample = SampleOf(state);
  const std::size_t length = std::filesystem::file_size(sample.compiled);
  vexel::MeasureMaking(state, [&] { return ReadPlain(sample.compiled, length, true); });
  vexel::CountAreas(state, sample.areas);
  vexel::CountBytes(state, length);
}
BENCHMARK(FloorCompiledFloats)->Apply(AllSizes);

// To FurtherPage: fill, outline, encode and write by plain gd; no title, legend or area lines.
void FloorGdPage(State& state) {
  vexel::FlatPage page = vexel::MakeFlatPage(vexel::GetPageInput(SampleOf(state).copies));
  const std::string path = vexel::WorkFile("floor.gif").string();
  for (auto _ : state) {
    vexel::GdCanvas canvas(page);
    canvas.Draw();
    canvas.Save(path);
  }
  vexel::CountAreas(state, static_cast<int>(page.polygons.size()));
}
BENCHMARK(FloorGdPage)->Apply(AllSizes);

// To GifSave.
void FloorGdSave(State& state) {
  vexel::FlatPage page = vexel::MakeFlatPage(vexel::GetPageInput(SampleOf(state).copies));
  const std::string path = vexel::WorkFile("floor.gif").string();
  vexel::GdCanvas canvas(page);
  canvas.Draw();
  for (auto _ : state) canvas.Save(path);
  vexel::CountFile(state, path);
}
BENCHMARK(FloorGdSave)->Apply(AllSizes);

}  // namespace
