// A further publication page in one process: its composition, and what each medium makes of it.

#include <benchmark/benchmark.h>

#include "kit/publish/compose.h"
#include "kit/publish/raster.h"
#include "kit/publish/svg.h"
#include "kit/view/view.h"
#include "page_pdf.h"
#include "page_png.h"

namespace vexel {
namespace {

View& Counties() {
  static View view([] {
    Request request;
    request.data = VEXEL_SAMPLES_DIR "/us-counties.mdf";
    request.variable = "Unemployment rate 2009";
    request.level = 2;
    request.size = {800, 600};
    return request;
  }());
  return view;
}

template <typename Paint>
void DrawPages(benchmark::State& state, const Paint& paint) {
  View& view = Counties();
  for (auto _ : state) benchmark::DoNotOptimize(paint(Compose(view)));
}

void BM_PublishedComposition(benchmark::State& state) {
  DrawPages(state, [](const Drawing& drawing) { return drawing.areas.size(); });
}
void BM_PublishedRaster(benchmark::State& state) {
  DrawPages(state, [](const Drawing& drawing) { return RasterOf(drawing, 1.0).data.back(); });
}
void BM_PublishedSvg(benchmark::State& state) { DrawPages(state, SvgText); }
void BM_PublishedPng(benchmark::State& state) {
  DrawPages(state, [](const Drawing& drawing) { return print::PagePng(drawing, 1.0); });
}
void BM_PublishedPdf(benchmark::State& state) {
  DrawPages(state, [](const Drawing& drawing) { return print::PagePdf(drawing, 1.0); });
}

BENCHMARK(BM_PublishedComposition)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PublishedRaster)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PublishedSvg)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PublishedPng)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PublishedPdf)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vexel
