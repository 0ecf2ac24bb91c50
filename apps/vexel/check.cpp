// What is doubtful in maps and data files.

#include <vexel/data/dataset.h>
#include <vexel/map/map.h>
#include <vexel/messages/remarks.h>

#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include "arguments.h"
#include "commands.h"
#include "kit/files/files.h"
#include "kit/files/looks.h"
#include "kit/files/printable.h"
#include "kit/request/error.h"
#include "kit/request/json_text.h"
#include "kit/view/load.h"

namespace vexel::cli {

namespace {

// Lists each thing once, though two data files may share a map.
class Finder : public Listener {
 public:
  explicit Finder(bool asJson) : asJson_(asJson) {}

  void Check(const std::string& file, const std::string& mapFile) {
    const CurrentHost current(*this);
    const std::size_t lostBefore = GetLostRows().size();
    try {
      Load(file, mapFile);
    } catch (const Error& refused) {
      if (refused.GetKind() == Error::Kind::request) throw;
      if (!refused.IsTold()) Tell(refused.what());
    }
    for (std::size_t i = lostBefore; i < GetLostRows().size(); ++i) FindLostRow(file, i);
  }

  std::size_t GetCount() const { return found_.size(); }
  const std::string& GetText() const { return text_; }

 private:
  void Load(const std::string& file, const std::string& mapFile) {
    CVELAMap map;
    const FileKind kind = IsStandard(file) ? FileKind::dataFile : LooksOfFile(file).kind;
    if (kind == FileKind::textMap || kind == FileKind::compiledMap || IsCompiledName(file)) {
      LoadMap(map, file, 0, *this);
      return;
    }
    CVELAData data;
    map.data = &data;
    data.map = &map;
    LoadData(data, file, mapFile, *this);
  }

  void Tell(const std::string& message) override {
    RemarkInfo none;
    Find(none, "refused", message);
  }

  void Doubt(const RemarkInfo& remark, const std::string& sentence) override {
    Find(remark, RemarkEntryOf(remark.kind).name, sentence);
  }

  void FindLostRow(const std::string& file, std::size_t index) {
    const LostRow& row = GetLostRows()[index];
    RemarkInfo where;
    where.file = file;
    where.line = row.line;
    where.area = row.codes;
    Find(where, "area-not-in-map",
         file + ':' + std::to_string(row.line) + ": area " + row.codes +
             (row.name == "~" ? "" : " (" + row.name + ')') + ": the map has no such area");
  }

  void Find(const RemarkInfo& where, std::string_view kind, const std::string& sentence) {
    if (!found_.insert(sentence).second) return;
    if (!asJson_) {
      text_.append(Printable(sentence)).append("\n");
      return;
    }
    text_ += text_.empty() ? "\n  {\"kind\": " : ",\n  {\"kind\": ";
    AppendJson(text_, kind);
    AppendMember("file", where.file);
    if (where.line > 0) text_ += ", \"line\": " + std::to_string(where.line);
    AppendMember("area", where.area);
    if (where.column > 0) text_ += ", \"column\": " + std::to_string(where.column);
    AppendMember("columnName", where.columnName);
    AppendMember("found", where.found);
    AppendMember("sentence", sentence);
    text_ += '}';
  }

  void AppendMember(const char* name, std::string_view value) {
    if (value.empty()) return;
    text_.append(", \"").append(name).append("\": ");
    AppendJson(text_, value);
  }

  bool asJson_;
  std::set<std::string> found_;
  std::string text_;
};

}  // namespace

int Check(int argc, const char* const* argv, CliHost& host) {
  std::vector<std::string> files;
  std::string mapFile;
  bool asJson = false;
  Arguments arguments("vexel check",
                      "List everything in maps and data files that is taken as the rules say though"
                      " you will hardly have meant it: file, line, area, column, the text found and"
                      " what it is taken for. A data file's map is looked at as well. The exit"
                      " status is 1 when there is anything to list.",
                      "vexel check counties.mdf counties.map");
  arguments.Positionals("FILE", "Maps and data files", files);
  arguments.Option("--map", "FILE", "Map to use instead of the one that a data file names",
                   mapFile);
  arguments.Flag("--json", "Print JSON", asJson);
  if (!arguments.Parse(argc, argv)) return kDone;
  Finder finder(asJson);
  finder.SetSeparators(host.GetSeparators());
  for (const std::string& file : files) finder.Check(file, mapFile);
  const std::size_t count = finder.GetCount();
  WriteText("-", asJson ? "{\"count\": " + std::to_string(count) + ", \"found\": [" +
                              finder.GetText() + (count > 0 ? "\n" : "") + "]}\n"
                        : finder.GetText());
  if (count == 0) Say(files.size() == 1 ? "nothing doubtful" : "nothing doubtful in any file");
  return count == 0 ? kDone : kFailed;
}

}  // namespace vexel::cli
