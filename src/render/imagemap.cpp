#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "render/mapgif.h"

namespace {

constexpr std::string_view kStart = R"(<area shape="polygon" coords=")";
constexpr std::string_view kBeforeLink = R"("  href=")";
constexpr std::string_view kEnd = "')\">";
constexpr std::string_view kLineEnd = "\r\n";

constexpr std::size_t kVerticesOfLine = 50;
constexpr std::size_t kLongestVertex = 24;  // two numbers of up to eleven characters, two commas

// A number with the comma behind it, in four bytes.
using Cell = std::array<char, 4>;

constexpr std::size_t LengthOf(int number) {
  return 2U + static_cast<std::size_t>(number > 9) + static_cast<std::size_t>(number > 99);
}

// Most pixels of most pages have a short number. It takes one move from here.
constexpr auto kCells = [] {
  std::array<Cell, 1000> cells{};
  for (int number = 0; number < 1000; ++number) {
    Cell& cell = cells[static_cast<std::size_t>(number)];
    std::size_t at = LengthOf(number) - 1;
    cell[at] = ',';
    for (int rest = number; at > 0; rest /= 10) cell[--at] = static_cast<char>('0' + rest % 10);
  }
  return cells;
}();

// A part of the element that is written in place and handed over whole: a large map has a million
// of these numbers.
class Piece {
 public:
  void Add(std::string_view text) { end_ = std::copy(text.begin(), text.end(), end_); }
  void Add(int number) { end_ = std::to_chars(end_, text_.data() + text_.size(), number).ptr; }

  void AddWithComma(int number) {
    const auto index = static_cast<unsigned>(number);
    if (index < kCells.size()) [[likely]] {
      std::memcpy(end_, kCells[index].data(), sizeof(Cell));
      end_ += LengthOf(number);
    } else {
      Add(number);
      *end_++ = ',';
    }
  }
  void DropComma() { --end_; }

  void HandTo(CStdioFile& file) {
    file.WriteString(std::string_view(text_.data(), static_cast<std::size_t>(end_ - text_.data())));
    end_ = text_.data();
  }

 private:
  // The longest piece is a line full of vertices, with what may stand before and behind it.
  std::array<char, kStart.size() + kVerticesOfLine * kLongestVertex + kBeforeLink.size()> text_;
  char* end_ = text_.data();
};

}  // namespace

void CMapGif::PolygonToHtml(const CAreaStruct& key, const CVELAString& url) {
  if (htmlFile == nullptr) return;
  const std::span<const CPoint> vertices = GetVertices();
  Piece piece;
  piece.Add(kStart);
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    if (i % kVerticesOfLine == kVerticesOfLine - 1) {
      piece.Add(kLineEnd);
      piece.HandTo(*htmlFile);
    }
    piece.AddWithComma(vertices[i].x);
    piece.AddWithComma(vertices[i].y);
  }
  if (!vertices.empty()) piece.DropComma();
  piece.Add(kBeforeLink);
  piece.HandTo(*htmlFile);

  htmlFile->WriteString(url.View());
  for (int k = 0; k < CAreaStruct::kNumCodes; ++k) {
    const std::int32_t code = key.codes[static_cast<std::size_t>(k)];
    if (code == 0) continue;
    piece.Add("&A");
    piece.Add(k);
    piece.Add("=");
    piece.Add(code);
  }
  piece.Add(kEnd);
  piece.Add(kLineEnd);
  piece.HandTo(*htmlFile);
}
