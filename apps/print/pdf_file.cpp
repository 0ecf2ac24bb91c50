// How instructions come into a file that Cairo has written.

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <optional>
#include <string_view>

#include "kit/request/error.h"
#include "kit/request/values.h"
#include "pdf_content.h"

namespace vexel::print {

namespace {

Error Unknown() { return Failed("the PDF of the texts is of an unknown form"); }

// The whole number that stands at a place, behind blanks.
std::size_t NumberAt(std::string_view text, std::size_t at) {
  at = std::min(text.find_first_not_of(" \n", at), text.size());
  const std::size_t end = std::min(text.find_first_not_of("0123456789", at), text.size());
  const std::optional<int> number = ParseInt(text.substr(at, end - at));
  if (!number) throw Unknown();
  return static_cast<std::size_t>(*number);
}

std::size_t Behind(std::string_view text, std::string_view word, std::size_t from = 0) {
  const std::size_t at = text.find(word, from);
  if (at == std::string_view::npos) throw Unknown();
  return at + word.size();
}

std::string Packed(const std::string& content) {
  // Higher levels take five times as long for a seventh less.
  constexpr int kLevel = 2;
  uLongf size = compressBound(static_cast<uLong>(content.size()));
  std::string packed(size, '\0');
  const int status = compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
                               reinterpret_cast<const Bytef*>(content.data()),
                               static_cast<uLong>(content.size()), kLevel);
  if (status != Z_OK) throw std::bad_alloc();
  packed.resize(size);
  return packed;
}

// A file's objects by its table, of the form that all versions before 1.5 have.
class Objects {
 public:
  explicit Objects(std::string_view pdf) : pdf_(pdf) {
    const std::size_t end = pdf.rfind("startxref");
    if (end == std::string_view::npos) throw Unknown();
    tableAt_ = NumberAt(pdf, Behind(pdf, "startxref", end));
    if (!pdf.substr(std::min(tableAt_, pdf.size())).starts_with("xref\n0 ")) throw Unknown();
    count_ = NumberAt(pdf, tableAt_ + kTableHead.size());
    entriesAt_ = Behind(pdf, "\n", tableAt_ + kTableHead.size());
    trailer_ = pdf.substr(Behind(pdf, "trailer", entriesAt_), std::string_view::npos);
    trailer_ = trailer_.substr(0, trailer_.rfind("startxref"));
  }

  std::size_t TableAt() const { return tableAt_; }
  std::size_t Count() const { return count_; }
  std::string_view Trailer() const { return trailer_; }

  // From its number up to its end.
  std::string_view At(std::size_t number) const {
    constexpr std::size_t kEntry = 20;
    const std::size_t begin = NumberAt(pdf_, entriesAt_ + number * kEntry);
    return pdf_.substr(begin, Behind(pdf_, "endobj", begin) - begin);
  }

 private:
  static constexpr std::string_view kTableHead = "xref\n0 ";

  std::string_view pdf_;
  std::size_t tableAt_ = 0;
  std::size_t entriesAt_ = 0;
  std::size_t count_ = 0;
  std::string_view trailer_;
};

std::size_t PageOf(const Objects& objects) {
  for (std::size_t i = 1; i < objects.Count(); ++i) {
    const std::string_view object = objects.At(i);
    const std::string head = std::to_string(i) + " 0 obj\n";
    if (!object.starts_with(head)) continue;
    const std::string_view inside = object.substr(head.size());
    if (inside.starts_with("<< /Type /Page ") || inside.starts_with("<< /Type /Page\n")) return i;
  }
  throw Unknown();
}

// "%010zu 00000 n \n", after the number of the one object that it is about.
std::string TableEntry(std::size_t number, std::size_t at) {
  constexpr std::size_t kLongest = 64;
  std::array<char, kLongest> entry;
  const int length =
      std::snprintf(entry.data(), entry.size(), "%zu 1\n%010zu 00000 n \n", number, at);
  return {entry.data(), static_cast<std::size_t>(length)};
}

}  // namespace

void PutUnder(std::string& pdf, const std::string& content) {
  const Objects objects(pdf);
  const std::size_t pageNumber = PageOf(objects);
  const std::size_t number = objects.Count();
  std::string page(objects.At(pageNumber));
  const std::size_t contents = Behind(page, "/Contents ");
  const std::string drawn = std::to_string(NumberAt(page, contents)) + " 0 R";
  if (page.compare(contents, drawn.size(), drawn) != 0) throw Unknown();
  page.replace(contents, drawn.size(), "[" + std::to_string(number) + " 0 R " + drawn + "]");
  std::string trailer(objects.Trailer());
  const std::size_t size = Behind(trailer, "/Size ");
  trailer.replace(size, std::to_string(number).size(), std::to_string(number + 1));
  trailer.insert(trailer.rfind(">>"), "/Prev " + std::to_string(objects.TableAt()) + "\n");

  const std::string packed = Packed(content);
  const std::size_t pageAt = pdf.size();
  pdf += page + '\n';
  const std::size_t contentAt = pdf.size();
  pdf += std::to_string(number) + " 0 obj\n<< /Length " + std::to_string(packed.size()) +
         " /Filter /FlateDecode >>\nstream\n" + packed + "\nendstream\nendobj\n";
  const std::size_t tableAt = pdf.size();
  pdf += "xref\n" + TableEntry(pageNumber, pageAt) + TableEntry(number, contentAt) + "trailer" +
         trailer + "startxref\n" + std::to_string(tableAt) + "\n%%EOF\n";
}

}  // namespace vexel::print
