// What docs/formats.md says of the files is what the readers do.
//
// Its blocks "map NAME" and "mdf NAME" are whole files, which may name each other, and no message
// comes of them. A block "remarks" holds the remarks on the last file before it; without one there
// are none.

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "data/datafile_reader.h"
#include "data/dataset.h"
#include "map/map.h"
#include "map/text_reader.h"
#include "messages/messages.h"
#include "messages/remarks.h"
#include "support/files.h"
#include "support/recording_host.h"

namespace vexel::test {
namespace {

constexpr std::string_view kFence = "```";

std::vector<std::string> DocumentLines() {
  std::ifstream file(std::string(VEXEL_SAMPLES_DIR) + "/../docs/formats.md");
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

struct Example {
  std::string kind;
  std::string name;
  std::string text;
  std::string remarks;
};

std::vector<Example> Examples() {
  std::vector<Example> examples;
  std::string* block = nullptr;
  for (const std::string& line : DocumentLines()) {
    if (!line.starts_with(kFence)) {
      if (block != nullptr) block->append(line).append("\n");
      continue;
    }
    std::istringstream words(line.substr(kFence.size()));
    std::string kind;
    std::string name;
    words >> kind >> name;
    block = nullptr;
    if (kind == "map" || kind == "mdf") {
      examples.push_back({kind, name, {}, {}});
      block = &examples.back().text;
    } else if (kind == "remarks" && !examples.empty()) {
      block = &examples.back().remarks;
    }
  }
  return examples;
}

// The words in code that begin the rows of tables, in order, of one section of the document.
std::vector<std::string> FirstCells(std::string_view section) {
  constexpr std::string_view kRow = "| `";
  std::vector<std::string> cells;
  bool isInside = false;
  for (const std::string& line : DocumentLines()) {
    if (line.starts_with("## ")) isInside = line.substr(3) == section;
    if (!isInside || !line.starts_with(kRow)) continue;
    cells.push_back(line.substr(kRow.size(), line.find('`', kRow.size()) - kRow.size()));
  }
  return cells;
}

// The sentences a line each, with the names of files as the document has them.
std::string Joined(const std::vector<std::string>& sentences, const std::string& folder) {
  std::string lines;
  for (const std::string& sentence : sentences)
    lines.append(sentence.starts_with(folder) ? sentence.substr(folder.size()) : sentence) += '\n';
  return lines;
}

TEST(Formats, ExamplesLoadAndSayWhatStandsBehindThem) {
  const TempDir dir;
  const std::vector<Example> examples = Examples();
  ASSERT_GE(examples.size(), 4U);
  for (const Example& example : examples) dir.Write(example.name, example.text);
  for (const Example& example : examples) {
    SCOPED_TRACE(example.name);
    RecordingHost host;
    CVELAMap map;
    CVELAData data;
    data.map = &map;
    map.data = &data;
    const CString path(dir.Path(example.name).c_str());
    const int loaded = example.kind == "map" ? map.Build(path, 0, 0) : data.Build(path, 1, 0);
    EXPECT_EQ(loaded, 1);
    EXPECT_TRUE(host.boxes.empty()) << host.boxes.front().text;
    EXPECT_EQ(Joined(host.sentences, dir.Path("")), example.remarks);
  }
}

void ExpectAllWords(std::span<const std::string_view> known, std::string_view section,
                    std::string_view kind) {
  const std::vector<std::string> told = FirstCells(section);
  EXPECT_EQ(std::set<std::string>(told.begin(), told.end()),
            std::set<std::string>(known.begin(), known.end()));
  std::string shown;
  for (const Example& example : Examples())
    if (example.kind == kind) shown.append("\n").append(example.text);
  for (const std::string_view word : known) {
    const std::string end = word.starts_with('[') ? "\n" : "=";
    EXPECT_NE(shown.find('\n' + std::string(word) + end), std::string::npos) << word;
  }
}

TEST(Formats, TablesHaveEachWordAndAnExampleShowsIt) {
  ExpectAllWords(MapWords(), "Text map (`.map`)", "map");
  ExpectAllWords(DataFileWords(), "Data file (`.mdf`)", "mdf");
}

// The first line of each, without the values in it.
TEST(Formats, TableOfMessagesHasOnlyTextsOfTheEngine) {
  std::set<std::string> texts;
  for (int number = 16000; number < 16200; ++number) {
    const std::string_view text = MessageText(static_cast<Message>(number));
    texts.emplace(text.substr(0, text.find('\n')));
  }
  const std::vector<std::string> told = FirstCells("Messages");
  EXPECT_GT(told.size(), 20U);
  for (const std::string& text : told) EXPECT_TRUE(texts.contains(text)) << text;
}

TEST(Formats, TableOfRemarksHasEachKindInOrder) {
  std::vector<std::string> names;
  for (const RemarkEntry& entry : AllRemarks()) names.emplace_back(entry.name);
  EXPECT_EQ(FirstCells("Remarks"), names);
}

}  // namespace
}  // namespace vexel::test
