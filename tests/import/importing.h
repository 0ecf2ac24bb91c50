// A folder with files to import, and importing them as a user would.

#ifndef VEXEL_TESTS_IMPORT_IMPORTING_H_
#define VEXEL_TESTS_IMPORT_IMPORTING_H_

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "account.h"
#include "host.h"
#include "import.h"
#include "kit/request/error.h"
#include "options.h"
#include "support/files.h"

namespace vexel::import {

class Importing : public test::TempDir {
 public:
  // Four squares in two groups, one of them with a hole in which the fourth lies:
  //
  //   B/4 in the hole of A/1    A/1 from 0 to 6    A/2 to the right of it    B/3 right of that
  Importing() {
    Write(
        "areas.geojson",
        Collection({Feature("A", "01", "Ärea, one", Square(0, 0, 6) + "," + Square(2, 2, 2, true)),
                    Feature("A", "02", "Two", Square(6, 0, 6)),
                    Feature("B", "03", "Three", Square(12, 0, 6)),
                    Feature("B", "04", "Four", Square(2, 2, 2))}));
  }

  static std::string Collection(const std::vector<std::string>& features) {
    std::string text = R"({"type":"FeatureCollection","features":[)";
    for (const std::string& feature : features) {
      text += (&feature == features.data() ? "" : ",\n") + feature;
    }
    return text + "]}";
  }

  // `rings` are those of one polygon.
  static std::string Feature(const std::string& group, const std::string& id,
                             const std::string& name, const std::string& rings) {
    return R"({"type":"Feature","properties":{"group":")" + group + R"(","id":")" + id +
           R"(","name":")" + name + R"(","n":)" + std::to_string(id.size()) + ".7" +
           R"(},"geometry":{"type":"Polygon","coordinates":[)" + rings + "]}}";
  }

  static std::string Ring(const std::vector<std::pair<double, double>>& points) {
    std::string text = "[";
    for (const auto& [x, y] : points) {
      text +=
          (text.size() > 1 ? "," : "") + ("[" + std::to_string(x)) + "," + std::to_string(y) + "]";
    }
    return text + "]";
  }

  static std::string Square(double x, double y, double side, bool backwards = false) {
    if (backwards)
      return Ring({{x, y}, {x, y + side}, {x + side, y + side}, {x + side, y}, {x, y}});
    return Ring({{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}, {x, y}});
  }

  // The areas in another format.
  void Convert(const char* driver, const std::string& name, const char* option = nullptr) const {
    GDALAllRegister();
    const GDALDatasetUniquePtr from(
        GDALDataset::Open(Path("areas.geojson").c_str(), GDAL_OF_VECTOR));
    const GDALDatasetUniquePtr to(GetGDALDriverManager()->GetDriverByName(driver)->Create(
        Path(name).c_str(), 0, 0, 0, GDT_Unknown, nullptr));
    std::array<char*, 2> options{const_cast<char*>(option), nullptr};
    to->CopyLayer(from->GetLayer(0), "areas", options.data());
  }

  // Imports with words in which "@" stands for the folder, to the files called "to".
  Account Run(std::string words) const {
    words += " -o @to";
    std::vector<std::string> arguments{"vexel-import"};
    for (std::size_t at = 0; at < words.size();) {
      const std::size_t end = std::min(words.find(' ', at), words.size());
      std::string word = words.substr(at, end - at);
      for (std::size_t mark = word.find('@'); mark != std::string::npos; mark = word.find('@')) {
        word.replace(mark, 1, Path(""));
      }
      if (!word.empty()) arguments.push_back(std::move(word));
      at = end + 1;
    }
    std::vector<const char*> argv;
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    argv.push_back(nullptr);
    Options options;
    ReadOptions(options, static_cast<int>(argv.size()) - 1, argv.data());
    cli::CliHost host;
    host.SetProgressWanted(false);
    host.SetRemarksWanted(false);
    const CurrentHost current(host);
    return Import(options, host);
  }

  // What is said instead of importing, without the folder; empty when all goes well.
  std::string Refusal(const std::string& words) const {
    try {
      Run(words);
    } catch (const Error& error) {
      std::string text = error.what();
      for (std::size_t at = text.find(Path("")); at != std::string::npos;
           at = text.find(Path(""))) {
        text.erase(at, Path("").size());
      }
      return text;
    }
    return {};
  }

  // The lines of a text map that tell its tree: names, keys and rings as numbers of points.
  std::string TreeOf(const std::string& name) const {
    std::string tree;
    std::size_t points = 0;
    const auto endRing = [&] {
      if (points > 0) tree += std::to_string(points) + ' ';
      points = 0;
    };
    std::istringstream lines(Read(name));
    for (std::string line; std::getline(lines, line);) {
      if (!line.empty() && line.find_first_not_of("-.0123456789 ") == std::string::npos) {
        ++points;
        continue;
      }
      endRing();
      if (line.starts_with("Name=")) tree += line.substr(5) + ' ';
      if (line.starts_with("AreaStructure=")) tree += '(' + line.substr(14) + ") ";
      if (line.starts_with("Hole")) tree += "hole ";
      if (line == "[EndGroup]") tree += "end ";
    }
    endRing();
    return tree;
  }
};

}  // namespace vexel::import

#endif  // VEXEL_TESTS_IMPORT_IMPORTING_H_
