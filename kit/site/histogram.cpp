#include "kit/site/histogram.h"

#include <vexel/brindle/text.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "kit/palettes/color.h"
#include "kit/publish/fills.h"
#include "kit/request/hints.h"
#include "kit/request/markup.h"

namespace vexel {

namespace {

// The values that there are, in ascending order.
std::span<const double> ValuesOf(const CLegend& legend) {
  const std::span<const double> all = legend.values.Elements();
  const auto missing = static_cast<std::size_t>(std::max(legend.numMissing, 0));
  return all.subspan(std::min(missing, all.size()));
}

// Most values would stand in the first bins.
bool IsLopsided(std::span<const double> values) {
  constexpr double kLopsided = 20.0;
  return values.front() > 0.0 && values.back() / values[values.size() / 2] > kLopsided;
}

// From a value to its part of the way, and back, on either scale.
class Scale {
 public:
  explicit Scale(const Histogram& histogram)
      : isLogarithmic_(histogram.isLogarithmic),
        from_(To(histogram.least)),
        to_(To(histogram.greatest)) {}

  double PartOf(double value) const { return (To(value) - from_) / (to_ - from_); }
  double ValueAt(double part) const {
    const double there = from_ + (to_ - from_) * part;
    return isLogarithmic_ ? std::exp(there) : there;
  }

 private:
  double To(double value) const { return isLogarithmic_ ? std::log(value) : value; }

  bool isLogarithmic_;
  double from_;
  double to_;
};

class Counter {
 public:
  Counter(const View& view, std::span<const double> values) : values_(values) {
    for (const LegendGroup& group : view.legend.GetGroups()) lower_.push_back(PlaceOf(group.lower));
    lower_.push_back(values.size());
  }

  // Shares out the values from one place to another to the groups.
  void Share(Histogram& histogram, int bin, std::size_t begin, std::size_t end) const {
    Add(histogram, bin, CLegend::kNoDataSlot, begin, std::min(end, lower_.front()));
    for (std::size_t group = 0; group + 1 < lower_.size(); ++group) {
      Add(histogram, bin, static_cast<int>(group), std::max(begin, lower_[group]),
          std::min(end, lower_[group + 1]));
    }
  }

  std::size_t PlaceOf(double value) const {
    return static_cast<std::size_t>(std::lower_bound(values_.begin(), values_.end(), value) -
                                    values_.begin());
  }

 private:
  static void Add(Histogram& histogram, int bin, int slot, std::size_t begin, std::size_t end) {
    if (begin < end) histogram.parts.push_back({bin, slot, end - begin});
  }

  std::span<const double> values_;
  std::vector<std::size_t> lower_;  // where the values of each group begin, and the last ones end
};

// Measures of the picture, in its own units.
constexpr int kBarWidth = 10;
constexpr int kWidth = kBins * kBarWidth;
constexpr int kHeight = 120;
constexpr int kTextRoom = 22;

std::string Number(double value) {
  constexpr double kTenths = 10.0;
  return NumberText(std::round(value * kTenths) / kTenths);
}

std::string Bars(const Histogram& histogram, const std::vector<FillStyle>& fills) {
  std::array<std::size_t, kBins> heights{};
  for (const Histogram::Part& part : histogram.parts)
    heights.at(static_cast<std::size_t>(part.bin)) += part.count;
  const auto most = static_cast<double>(*std::max_element(heights.begin(), heights.end()));
  std::array<std::size_t, kBins> below{};
  std::string bars;
  for (const Histogram::Part& part : histogram.parts) {
    std::size_t& stacked = below.at(static_cast<std::size_t>(part.bin));
    const double bottom = kHeight * (1.0 - static_cast<double>(stacked) / most);
    stacked += part.count;
    const double top = kHeight * (1.0 - static_cast<double>(stacked) / most);
    bars += "<rect x=\"" + std::to_string(part.bin * kBarWidth) + "\" y=\"" + Number(top) +
            "\" width=\"9\" height=\"" + Number(std::max(bottom - top, 0.5)) + "\" fill=\"" +
            ColorText(fills[static_cast<std::size_t>(part.slot)].color) + "\"/>";
  }
  return bars;
}

std::string Lines(const Histogram& histogram) {
  std::string path;
  for (const double bound : histogram.bounds) {
    path += 'M' + Number(bound * kWidth) + " 0v" + std::to_string(kHeight + 4);
  }
  return path.empty() ? path : "<path class=\"bound\" d=\"" + path + "\"/>";
}

std::string ValueOn(View& view, double value) {
  return MarkupText(
      XmlText(ColumnText(view, view.data.GetSelected(), value, view.listener.GetSeparators())));
}

}  // namespace

Histogram HistogramOf(const View& view) {
  Histogram histogram;
  const std::span<const double> values = ValuesOf(view.legend);
  if (values.empty()) return histogram;
  histogram.least = values.front();
  histogram.greatest = values.back();
  histogram.isLogarithmic = IsLopsided(values);
  const Counter counter(view, values);
  if (histogram.least == histogram.greatest) {
    counter.Share(histogram, 0, 0, values.size());
    return histogram;
  }
  const Scale scale(histogram);
  std::size_t begin = 0;
  for (int bin = 0; bin < kBins; ++bin) {
    const bool isLast = bin + 1 == kBins;
    const double upper = scale.ValueAt((bin + 1.0) / kBins);
    const std::size_t end = isLast ? values.size() : std::max(begin, counter.PlaceOf(upper));
    counter.Share(histogram, bin, begin, end);
    begin = end;
  }
  for (const LegendGroup& group : view.legend.GetGroups()) {
    if (group.lower > histogram.least && group.lower <= histogram.greatest) {
      histogram.bounds.push_back(scale.PartOf(group.lower));
    }
  }
  return histogram;
}

std::string HistogramMarkup(View& view) {
  const Histogram histogram = HistogramOf(view);
  if (!(histogram.least < histogram.greatest)) return {};
  const std::string width = std::to_string(kWidth);
  const std::string line = std::to_string(kHeight + kTextRoom - 4);
  const std::string least = ValueOn(view, histogram.least);
  const std::string greatest = ValueOn(view, histogram.greatest);
  return "<svg class=\"histogram\" role=\"img\" viewBox=\"0 0 " + width + ' ' +
         std::to_string(kHeight + kTextRoom) + "\" aria-label=\"Histogram of " +
         Counted(ValuesOf(view.legend).size(), "value") + " from " + least + " to " + greatest +
         (histogram.isLogarithmic ? ", on a logarithmic scale" : "") +
         ", with the bounds of the groups\">" + Bars(histogram, FillsOf(view)) + Lines(histogram) +
         "<path class=\"axis\" d=\"M0 " + std::to_string(kHeight) + "h" + width +
         "\"/><text x=\"0\" y=\"" + line + "\">" + least + "</text>" +
         (histogram.isLogarithmic ? "<text class=\"middle\" x=\"" + std::to_string(kWidth / 2) +
                                        "\" y=\"" + line + "\">logarithmic</text>"
                                  : "") +
         "<text class=\"end\" x=\"" + width + "\" y=\"" + line + "\">" + greatest +
         "</text></svg>\n";
}

}  // namespace vexel
