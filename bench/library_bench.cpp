// The library's own work, step by step on the road from files to a page.

#include <memory>
#include <stdexcept>

#include "data/dataset.h"
#include "legend/legend.h"
#include "map/map.h"
#include "measure.h"
#include "page_input.h"
#include "render/mapgif.h"

namespace {

using benchmark::State;
using vexel::AllSizes;
using vexel::GetPageInput;
using vexel::PageInput;
using vexel::Sample;
using vexel::SampleOf;
using vexel::WorkFile;

constexpr const char* kUrl = "javascript:show('?";

void Check(int done) {
  if (done == 0) throw std::runtime_error("the library refused");
}

PageInput& InputOf(const State& state) { return GetPageInput(static_cast<int>(state.range(0))); }

std::unique_ptr<CVELAMap> LoadMap(const std::filesystem::path& path, int loadFloats) {
  auto map = std::make_unique<CVELAMap>();
  Check(map->Build(CString(path.c_str()), loadFloats, 0));
  return map;
}

void TextMapLoad(State& state) {
  const Sample& sample = SampleOf(state);
  vexel::MeasureMaking(state, [&] { return LoadMap(sample.map, 1); });
  vexel::CountAreas(state, sample.areas);
  vexel::CountFile(state, sample.map);
}
BENCHMARK(TextMapLoad)->Apply(AllSizes);

void CompiledLoad(State& state) {
  const Sample& sample = SampleOf(state);
  vexel::MeasureMaking(state, [&] { return LoadMap(sample.compiled, 0); });
  vexel::CountAreas(state, sample.areas);
}
BENCHMARK(CompiledLoad)->Apply(AllSizes);

void CompiledLoadFloats(State& state) {
  const Sample& sample = SampleOf(state);
  vexel::MeasureMaking(state, [&] { return LoadMap(sample.compiled, 1); });
  vexel::CountAreas(state, sample.areas);
  vexel::CountFile(state, sample.compiled);
}
BENCHMARK(CompiledLoadFloats)->Apply(AllSizes);

void SaveMap(State& state) {
  const Sample& sample = SampleOf(state);
  const auto map = LoadMap(sample.map, 1);
  const CVELAString path(WorkFile("saved.map").c_str());
  for (auto _ : state) map->SaveMap(path, nullptr);
  vexel::CountAreas(state, sample.areas);
  vexel::CountFile(state, path.GetString());
}
BENCHMARK(SaveMap)->Apply(AllSizes);

void SaveMpc(State& state) {
  const Sample& sample = SampleOf(state);
  const auto map = LoadMap(sample.map, 1);
  const CVELAString path(WorkFile("saved.mpc").c_str());
  for (auto _ : state) Check(map->SaveMpc(path));
  vexel::CountAreas(state, sample.areas);
  vexel::CountFile(state, path.GetString());
}
BENCHMARK(SaveMpc)->Apply(AllSizes);

std::unique_ptr<CVELAData> ReadData(CVELAMap& map, const std::filesystem::path& path) {
  auto data = std::make_unique<CVELAData>();
  data->map = &map;
  Check(data->Build(CString(path.c_str()), 0, 1));
  return data;
}

void MeasureDataRead(State& state, const Sample& sample, const std::filesystem::path& path) {
  const auto map = LoadMap(sample.compiled, 0);
  const int rows = ReadData(*map, path)->GetNumAreas();
  vexel::MeasureMaking(state, [&] { return ReadData(*map, path); });
  vexel::CountAreas(state, rows);
  vexel::CountFile(state, path);
}

void DataRead(State& state) {
  const Sample& sample = SampleOf(state);
  MeasureDataRead(state, sample, sample.data);
}
BENCHMARK(DataRead)->Apply(AllSizes);

// As many rows as asked for, on the map of 32 copies.
void DataReadRows(State& state) {
  const Sample& sample = vexel::GetSample(32);
  const auto path = vexel::MakeLongDataFile(sample, static_cast<int>(state.range(0)));
  MeasureDataRead(state, sample, path);
  std::filesystem::remove(path);
}
BENCHMARK(DataReadRows)->Unit(benchmark::kMillisecond)->Arg(1'000'000);

void LinkRows(State& state) {
  PageInput& input = InputOf(state);
  for (auto _ : state) input.map.SetAreaDataPointers(&input.data);
  vexel::CountAreas(state, input.data.GetNumAreas());
}
BENCHMARK(LinkRows)->Apply(AllSizes);

int DrawnAreas(const PageInput& input) { return input.legend.values.GetSize(); }

void Classify(State& state) {
  PageInput& input = InputOf(state);
  for (auto _ : state) input.legend.UpdateData(&input.map, &input.data);
  vexel::CountAreas(state, DrawnAreas(input));
}
BENCHMARK(Classify)->Apply(AllSizes);

void Prepare(CMapGif& page) {
  page.PrepareCoords(vexel::kPageWidth, vexel::kPageHeight);
  page.ApplyCoords();
}

void DrawWithAreaLines(CMapGif& page, CVELAMap& map, const CString& path) {
  CStdioFile html;
  Check(html.Open(path.GetString(), CFile::modeCreate | CFile::modeWrite));
  page.SetHtmlFile(&html);
  page.DrawMap(&map, kUrl);
  page.SetHtmlFile(nullptr);
  Check(html.Close());
}

void DrawMap(State& state) {
  PageInput& input = InputOf(state);
  CMapGif page(&input.map, &input.legend, &input.data, "");
  Prepare(page);
  for (auto _ : state) page.DrawMap(&input.map, kUrl);
  vexel::CountAreas(state, DrawnAreas(input));
}
BENCHMARK(DrawMap)->Apply(AllSizes);

// The bytes are those of the area lines.
void DrawMapAreaLines(State& state) {
  PageInput& input = InputOf(state);
  const CString path(WorkFile("page.html").c_str());
  CMapGif page(&input.map, &input.legend, &input.data, "");
  Prepare(page);
  for (auto _ : state) DrawWithAreaLines(page, input.map, path);
  vexel::CountAreas(state, DrawnAreas(input));
  vexel::CountFile(state, path.GetString());
}
BENCHMARK(DrawMapAreaLines)->Apply(AllSizes);

void GifSave(State& state) {
  PageInput& input = InputOf(state);
  const CString path(WorkFile("page.gif").c_str());
  CMapGif page(&input.map, &input.legend, &input.data, path);
  Prepare(page);
  page.DrawMap(&input.map, kUrl);
  for (auto _ : state) Check(page.Save());
  vexel::CountFile(state, path.GetString());
}
BENCHMARK(GifSave)->Apply(AllSizes);

void FurtherPage(State& state) {
  PageInput& input = InputOf(state);
  const CString path(WorkFile("page.gif").c_str());
  const CString html(WorkFile("page.html").c_str());
  for (auto _ : state) {
    input.legend.UpdateData(&input.map, &input.data);
    CMapGif page(&input.map, &input.legend, &input.data, path);
    Prepare(page);
    DrawWithAreaLines(page, input.map, html);
    page.DrawTitle();
    page.DrawLegend();
    Check(page.Save());
  }
  vexel::CountAreas(state, DrawnAreas(input));
}
BENCHMARK(FurtherPage)->Apply(AllSizes);

}  // namespace
