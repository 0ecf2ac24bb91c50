#include "apps/serve/show.h"

#include <vexel/legend/legend.h>

#include <algorithm>
#include <array>
#include <utility>

#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/parameters.h"
#include "kit/request/query.h"

namespace vexel::serve {

namespace {

struct PartName {
  Part part;
  std::string_view name;
};

constexpr std::array kPartNames{
    PartName{Part::gif, "map.gif"},
    PartName{Part::svg, "map.svg"},
    PartName{Part::png, "map.png"},
    PartName{Part::pdf, "map.pdf"},
    PartName{Part::csv, "areas.csv"},
    PartName{Part::report, "report.json"},
    PartName{Part::outlines, "outlines.json"},
    PartName{Part::at, "at.json"},
    PartName{Part::go, "go"},
};

constexpr std::array<std::string_view, 4> kWays{"left", "right", "up", "down"};
constexpr int kMostRows = 1'000'000;

std::size_t ChoiceOf(std::string_view text, std::span<const std::string_view> words) {
  const auto found = std::find(words.begin(), words.end(), text);
  if (found != words.end()) return static_cast<std::size_t>(found - words.begin());
  throw WrongRequest(Quoted(text) + " is none of " + Joined(words) + Hint(text, words));
}

// A parameter of the viewer's own.
struct Own {
  std::string_view name;
  void (*set)(Target& target, const std::string& value);
};

CPoint& PixelOf(Target& target) {
  if (!target.pixel) target.pixel.emplace();
  return *target.pixel;
}

int Coordinate(std::string_view text) { return ParseIntBetween(text, 0, kMostPixels); }

// An area, not the map.
CAreaStruct KeyOf(std::string_view text) {
  CAreaStruct key = ParseKey(text);
  if (key.GetLevel() > 0) return key;
  throw WrongRequest(Quoted(text) + " is no area key such as 12,3");
}

constexpr std::array kOwn{
    Own{"with", [](Target& t, const std::string& value) { t.show.with = value; }},
    Own{"sort",
        [](Target& t, const std::string& value) { t.show.sort = kSorts[ChoiceOf(value, kSorts)]; }},
    Own{"down",
        [](Target& t, const std::string& value) {
          constexpr std::array<std::string_view, 3> kYes{"", "1", "0"};
          t.show.down = ChoiceOf(value, kYes) < 2;
        }},
    Own{"find", [](Target& t, const std::string& value) { t.show.find = value; }},
    Own{"in",
        [](Target& t, const std::string& value) {
          t.show.in = ParseIntBetween(value, 0, CLegend::kNoDataSlot);
        }},
    Own{"rows",
        [](Target& t, const std::string& value) {
          t.show.rows = ParseIntBetween(value, 1, kMostRows);
        }},
    Own{"area", [](Target& t, const std::string& value) { t.show.area = KeyOf(value); }},
    Own{"x", [](Target& t, const std::string& value) { PixelOf(t).x = Coordinate(value); }},
    Own{"y", [](Target& t, const std::string& value) { PixelOf(t).y = Coordinate(value); }},
    Own{"key", [](Target& t, const std::string& value) { t.key = KeyOf(value); }},
    Own{"way", [](Target& t,
                  const std::string& value) { t.way = static_cast<Way>(ChoiceOf(value, kWays)); }},
};

// In a path "+" is no blank.
std::string PathDecoded(std::string_view text) {
  std::string kept;
  for (const char c : text) {
    if (c == '+') {
      kept += "%2B";
    } else {
      kept += c;
    }
  }
  return PercentDecoded(kept);
}

// Codes, then perhaps a part; false for what is neither.
bool ReadSegments(Target& target, std::span<const std::string_view> segments) {
  CAreaStruct zoom;
  auto code = zoom.codes.begin();
  for (const std::string_view& segment : segments) {
    if (const std::optional<int> number = ParseInt(segment)) {
      if (code == zoom.codes.end()) return false;
      *code++ = *number;
      continue;
    }
    const auto* known = std::find_if(kPartNames.begin(), kPartNames.end(),
                                     [&](const PartName& each) { return each.name == segment; });
    if (known == kPartNames.end() || &segment != &segments.back()) return false;
    target.part = known->part;
  }
  if (zoom.GetLevel() > 0) target.show.request.zoom = zoom;
  return true;
}

// A form sends its fields even when nothing was said in them.
bool SaysNothing(std::string_view name, std::string_view value) {
  if (!value.empty()) return false;
  try {
    Request scratch;
    SetParameter(scratch, ParameterNamed(name), value, "");
    return false;
  } catch (const Error&) {
    return true;
  }
}

void ReadOwn(Target& target, const Own& own, std::string_view value) {
  try {
    own.set(target, PercentDecoded(value));
  } catch (const Error& error) {
    target.show.problems.push_back(std::string(own.name) + ": " + error.what());
  }
}

// Values in which a comma stands between others and never in one: a form encodes it.
std::string WithPlainCommas(std::string_view name, std::string_view value) {
  if (name != "bounds" && name != "colors") return std::string(value);
  std::string plain = PercentDecoded(value);
  std::erase(plain, ' ');
  return PercentEncoded(plain, ",");
}

bool IsList(std::string_view name) {
  const auto all = AllParameters();
  return std::any_of(all.begin(), all.end(), [=](const Parameter& parameter) {
    return parameter.name == name && parameter.kind == ParameterKind::list;
  });
}

// What a query says of the request, as ReadQuery takes it: a form has a field for each value of a
// list.
class Others {
 public:
  void Add(std::string_view part, const std::string& name, std::string_view value) {
    if (!IsList(name)) {
      query_.append(query_.empty() ? "" : "&").append(part);
      return;
    }
    const auto found = std::find_if(lists_.begin(), lists_.end(),
                                    [&](const auto& each) { return each.first == name; });
    const std::string plain = WithPlainCommas(name, value);
    if (found == lists_.end()) {
      lists_.emplace_back(name, plain);
    } else {
      found->second.append(",").append(plain);
    }
  }

  std::string Take() && {
    for (const auto& [name, values] : lists_) {
      query_.append(query_.empty() ? "" : "&").append(name).append("=").append(values);
    }
    return std::move(query_);
  }

 private:
  std::string query_;
  std::vector<std::pair<std::string, std::string>> lists_;
};

void ReadParameters(Target& target, std::string_view query) {
  Others others;
  for (const std::string_view part : Split(query, '&')) {
    const std::size_t equals = part.find('=');
    const bool isField = equals != std::string_view::npos;
    const std::string name = PercentDecoded(part.substr(0, equals));
    const std::string_view value = isField ? part.substr(equals + 1) : std::string_view();
    const auto* own =
        std::find_if(kOwn.begin(), kOwn.end(), [&](const Own& each) { return each.name == name; });
    if (own == kOwn.end()) {
      if (!isField || !SaysNothing(name, value)) others.Add(part, name, value);
    } else if (!value.empty() || own->name == "down") {
      ReadOwn(target, *own, value);
    }
  }
  ReadQuery(target.show.request, std::move(others).Take(), &target.show.problems);
}

void MakeNormal(Show& show) {
  if (show.sort.empty()) show.down = false;
  if (show.area) show.rows = 1;
  if (show.request.zoom && show.request.zoom->GetLevel() == 0) show.request.zoom.reset();
}

// What a browser appends to the address of a link around a picture: "?12,34".
void ReadSuffix(Target& target, std::string_view& query) {
  const std::size_t mark = query.rfind('?');
  const std::string_view suffix = mark == std::string_view::npos ? query : query.substr(mark + 1);
  const std::vector<std::string_view> sides = Split(suffix, ',');
  if (sides.size() != 2) return;
  const auto x = ParseInt(sides.front());
  const auto y = ParseInt(sides.back());
  if (!x || !y) return;
  target.pixel = CPoint(*x, *y);
  query = query.substr(0, mark == std::string_view::npos ? 0 : mark);
}

void Append(std::string& query, std::string_view name, std::string_view value) {
  query.append(query.empty() ? "" : "&").append(name).append("=").append(PercentEncoded(value));
}

// The viewer's own parameters as far as the part depends on them.
void AppendOwn(std::string& query, const Show& show, Part part) {
  const bool isPage = part == Part::page;
  const bool tellsValues = part == Part::at || part == Part::outlines;
  if (!isPage && part != Part::go && !tellsValues) return;
  if (!show.with.empty()) Append(query, "with", show.with);
  if (tellsValues) return;
  if (!show.sort.empty()) Append(query, "sort", show.sort);
  if (!show.sort.empty() && show.down) Append(query, "down", "1");
  if (!isPage) return;
  if (!show.find.empty()) Append(query, "find", show.find);
  if (show.in) Append(query, "in", std::to_string(*show.in));
  if (show.area) {
    query.append(query.empty() ? "" : "&").append("area=").append(KeyText(*show.area));
  } else if (show.rows != 1) {
    Append(query, "rows", std::to_string(show.rows));
  }
}

}  // namespace

std::optional<Target> ReadTarget(std::string_view target) {
  if (!target.starts_with('/')) return std::nullopt;
  const std::size_t mark = std::min(target.find('?'), target.size());
  std::vector<std::string_view> segments = Split(target.substr(1, mark - 1), '/');
  std::string_view query = target.substr(std::min(mark + 1, target.size()));
  if (segments.size() > 1 && segments.back().empty()) segments.pop_back();

  Target read;
  read.show.set = PathDecoded(segments.front());
  if (read.show.set.empty()) return std::nullopt;
  if (!ReadSegments(read, std::span(segments).subspan(1))) return std::nullopt;
  const std::optional<CAreaStruct> place = read.show.request.zoom;
  if (read.part == Part::go) ReadSuffix(read, query);
  ReadParameters(read, query);
  if (place) read.show.request.zoom = place;
  MakeNormal(read.show);
  return read;
}

std::string AddressOf(const Show& show, Part part) {
  std::string address = '/' + PercentEncoded(show.set);
  Request request = show.request;
  if (request.zoom && request.zoom->GetLevel() > 0) address += '/' + KeyText(*request.zoom, "/");
  request.zoom.reset();
  const auto* named = std::find_if(kPartNames.begin(), kPartNames.end(),
                                   [=](const PartName& each) { return each.part == part; });
  if (named != kPartNames.end()) address.append("/").append(named->name);
  std::string query = QueryText(request);
  AppendOwn(query, show, part);
  return query.empty() ? address : address + '?' + query;
}

}  // namespace vexel::serve
