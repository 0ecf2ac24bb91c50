// Files of areas: their layers, fields and features.

#ifndef VEXEL_APPS_IMPORT_GEO_FILE_H_
#define VEXEL_APPS_IMPORT_GEO_FILE_H_

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "flaws.h"
#include "kit/tables/encoding.h"
#include "shape.h"

namespace vexel::import {

// Coordinate systems by what PROJ knows of them, such as "EPSG:5070".
struct CrsChoice {
  std::string source;  // instead of what the file says; empty for that
  std::string target;  // to be projected into; empty to leave coordinates as they are
};

struct Feature {
  std::vector<std::string> values;  // of the fields asked for, as UTF-8 without blanks around it
  Shape shape;
};

// One layer of a file: GeoJSON, TopoJSON, Shapefile, GeoPackage or FlatGeobuf. What is wrong with a
// file ends in an Error of kind failure that names it, and what is asked for wrongly in one of kind
// request.
class GeoFile {
 public:
  // `layer` may be empty where the file has only one. `encoding` is that of a Shapefile's texts
  // where the file does not say or says it wrongly.
  GeoFile(const std::string& path, const std::string& layer, std::optional<Encoding> encoding);
  GeoFile(const GeoFile&) = delete;
  GeoFile& operator=(const GeoFile&) = delete;
  ~GeoFile();

  const std::string& Path() const { return path_; }
  const std::string& LayerName() const { return layer_; }
  const std::string& DriverName() const { return driver_; }
  const std::vector<std::string>& Fields() const { return fields_; }

  // The index of a field by its name, in any letter case where that names one only; nothing when
  // there is none. "fid" is the number of the feature where no field has that name.
  std::optional<std::size_t> FindField(std::string_view name) const;

  // The same; throws when there is none.
  std::size_t FieldNamed(std::string_view name) const;

  // Decides how coordinates get into the map; once before Read.
  void ChooseCoordinates(const CrsChoice& choice);
  bool InDegrees() const;

  // Whether the areas of both are in one system, after that choice.
  bool Fits(const GeoFile& other) const;

  // How many features there are, or -1 where only reading tells.
  long long FeatureCount() const;

  // Reads all features. `nameField` names them in messages; -1 for none. `step` is called for each
  // feature.
  std::vector<Feature> Read(const std::vector<std::size_t>& fields, int nameField, Flaws& flaws,
                            const std::function<void()>& step);

  // What was assumed about the file, as sentences.
  const std::vector<std::string>& Notes() const { return notes_; }

 private:
  struct Source;

  std::string path_;
  std::string layer_;
  std::string driver_;
  std::vector<std::string> fields_;
  std::vector<std::string> notes_;
  std::unique_ptr<Source> source_;
};

}  // namespace vexel::import

#endif  // VEXEL_APPS_IMPORT_GEO_FILE_H_
