#include "kit/report/map_data.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "kit/publish/svg.h"
#include "kit/report/page_pieces.h"
#include "kit/request/markup.h"

namespace vexel {

namespace {

// The texts of the values that there are, from the least to the greatest; each once.
class ValueTexts {
 public:
  ValueTexts(const View& view, const Drawing& drawing) : places_(view.areas.size()) {
    std::vector<std::pair<double, std::size_t>> values;
    for (std::size_t i = 0; i < view.areas.size(); ++i) {
      if (const auto value = ValueOf(view, *view.areas[i])) values.emplace_back(*value, i);
    }
    std::sort(values.begin(), values.end());
    for (const auto& [value, area] : values) {
      const std::string_view text = drawing.Of(drawing.areas[area].value);
      if (texts_.empty() || texts_.back() != text) texts_.push_back(text);
      places_[area] = texts_.size() - 1;
    }
  }

  const std::vector<std::string_view>& Texts() const { return texts_; }
  std::optional<std::size_t> PlaceFor(std::size_t area) const { return places_[area]; }

 private:
  std::vector<std::string_view> texts_;
  std::vector<std::optional<std::size_t>> places_;
};

class DataWriter {
 public:
  DataWriter(std::string& page, const View& view, const Drawing& drawing,
             const AreaParents& parents)
      : page_(page), view_(view), drawing_(drawing), parents_(parents) {}

  void Write() {
    WriteTexts("parentTexts", parents_.Texts());
    const ValueTexts values(view_, drawing_);
    WriteTexts("valueTexts", values.Texts());
    WriteForAreas("keys", [&](const AreaShape& area) { AppendWords(area.key); });
    WriteForAreas("names", [&](const AreaShape& area) { AppendWords(area.name); });
    WriteForAreas("parents", [&](const AreaShape& area) {
      page_ += std::to_string(parents_.PlaceFor(NumberOf(area)));
    });
    WriteForAreas("values", [&](const AreaShape& area) {
      const auto place = values.PlaceFor(NumberOf(area));
      page_ += place ? std::to_string(*place) : "null";
    });
    WriteForAreas("slots", [&](const AreaShape& area) { page_ += std::to_string(area.fill); });
    WriteForAreas("outlines", [&](const AreaShape& area) {
      page_ += '"';
      AppendPath(page_, drawing_, area.rings);
      page_ += '"';
    });
    page_ += "\"missing\":";
    AppendForScript(page_, XmlText(view_.legend.noDataText.View()));
  }

 private:
  std::size_t NumberOf(const AreaShape& area) const {
    return static_cast<std::size_t>(&area - drawing_.areas.data());
  }

  void AppendWords(const WordRange& words) { AppendForScript(page_, drawing_.Of(words)); }

  template <typename Items, typename Append>
  void WriteList(std::string_view name, const Items& items, const Append& append) {
    page_.append("\"").append(name).append("\":[");
    for (const auto& item : items) {
      append(item);
      page_ += ',';
    }
    if (!items.empty()) page_.pop_back();
    page_ += "],\n";
  }

  template <typename Texts>
  void WriteTexts(std::string_view name, const Texts& texts) {
    WriteList(name, texts, [this](std::string_view text) { AppendForScript(page_, text); });
  }

  template <typename Append>
  void WriteForAreas(std::string_view name, const Append& append) {
    WriteList(name, drawing_.areas, append);
  }

  std::string& page_;
  const View& view_;
  const Drawing& drawing_;
  const AreaParents& parents_;
};

}  // namespace

void AppendMapData(std::string& to, const View& view, const Drawing& drawing,
                   const AreaParents& parents) {
  DataWriter(to, view, drawing, parents).Write();
}

}  // namespace vexel
