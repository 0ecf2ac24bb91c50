#include "geo_file.h"

#include <cpl_conv.h>
#include <ogr_spatialref.h>
#include <ogrsf_frmts.h>
#include <vexel/platform/string.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <utility>

#include "geometry.h"
#include "kit/files/files.h"
#include "kit/files/looks.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/values.h"

namespace vexel::import {

namespace {

// Hears what the library has to say, which else would print it.
class LibraryListener {
 public:
  LibraryListener() { CPLPushErrorHandlerEx(Hear, this); }
  LibraryListener(const LibraryListener&) = delete;
  LibraryListener& operator=(const LibraryListener&) = delete;
  ~LibraryListener() { CPLPopErrorHandler(); }

  bool HasFailed() const { return !failure_.empty(); }
  const std::string& Failure() const { return failure_; }
  const std::vector<std::string>& Warnings() const { return warnings_; }

 private:
  static constexpr std::size_t kWarningsKept = 3;

  static void CPL_STDCALL Hear(CPLErr kind, CPLErrorNum number, const char* text) {
    auto& self = *static_cast<LibraryListener*>(CPLGetErrorHandlerUserData());
    if (number == CPLE_OutOfMemory) self.failure_ = "the file takes more memory than there is";
    if (kind >= CE_Failure && self.failure_.empty()) self.failure_ = OneLine(text);
    if (kind == CE_Warning && self.warnings_.size() < kWarningsKept) {
      self.warnings_.push_back(OneLine(text));
    }
  }

  static std::string OneLine(std::string_view text) {
    std::string line(text.substr(0, text.find_first_of("\r\n")));
    while (!line.empty() && (line.back() == '.' || line.back() == ' ')) line.pop_back();
    return line;
  }

  std::string failure_;
  std::vector<std::string> warnings_;
};

// The formats that are read, and no others: some of the library's would run queries, or go to the
// network for what a file names.
void RegisterFormats() {
  static const bool isDone = [] {
    RegisterOGRGeoJSON();
    RegisterOGRTopoJSON();
    RegisterOGRShape();
    RegisterOGRGeoPackage();
    RegisterOGRFlatGeobuf();
    return true;
  }();
  static_cast<void>(isDone);
}

constexpr std::array<const char*, 6> kFormats{"GeoJSON", "TopoJSON",   "ESRI Shapefile",
                                              "GPKG",    "FlatGeobuf", nullptr};

// The path as the library may see it: names of a certain kind make it read other things than the
// file.
std::string SafePath(const std::string& path) {
  if (path.find("://") != std::string::npos || path.starts_with("/vsi")) {
    throw Failed(path, "only files of this machine are read; fetch or unpack it first");
  }
  CheckReadable(path);
  std::string absolute = std::filesystem::absolute(path).string();
  if (absolute.starts_with("/vsi")) throw Failed(path, "move it to another folder");
  return absolute;
}

std::string Sibling(const std::string& path, const char* extension) {
  return std::filesystem::path(path).replace_extension(extension).string();
}

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error);
}

std::string TableOf(const std::string& shapefile) {
  return Exists(Sibling(shapefile, ".dbf")) ? Sibling(shapefile, ".dbf")
                                            : Sibling(shapefile, ".DBF");
}

// A number of the head of a Shapefile's table, least byte first.
std::size_t NumberAt(std::string_view table, std::size_t at, std::size_t bytes) {
  std::size_t number = 0;
  for (std::size_t i = bytes; i-- > 0;) {
    number = number * 256 + static_cast<unsigned char>(table[at + i]);
  }
  return number;
}

constexpr std::size_t kTableHead = 32;

// The other files that make a Shapefile; their names may be written in capitals, too.
void CheckShapefile(const std::string& path) {
  for (const auto& [small, large] : {std::pair{".shx", ".SHX"}, std::pair{".dbf", ".DBF"}}) {
    if (Exists(Sibling(path, small)) || Exists(Sibling(path, large))) continue;
    throw Failed(path, Sibling(path, small) +
                           " is missing; a Shapefile is several files of one name, copy them all");
  }
  const std::string table = ReadFile(TableOf(path));
  const bool hasHead = table.size() >= kTableHead;
  const std::size_t rows = hasHead ? NumberAt(table, 4, 4) : 0;
  if (hasHead && NumberAt(table, 8, 2) + rows * NumberAt(table, 10, 2) <= table.size()) return;
  throw Failed(TableOf(path), "ends before its last row; copy the whole file");
}

// The encoding of a Shapefile's texts when it does not say one: a file of its own does, or a byte
// in the head of the table.
std::optional<Encoding> UnsaidEncoding(const std::string& shapefile) {
  if (Exists(Sibling(shapefile, ".cpg")) || Exists(Sibling(shapefile, ".CPG"))) return std::nullopt;
  constexpr std::size_t kCodePage = 29;
  constexpr char kUnsaid = 0x57;  // "ANSI", which is whatever the writer's machine had
  const std::string table = ReadFile(TableOf(shapefile));
  if (table.size() < kTableHead) return std::nullopt;
  if (table[kCodePage] != 0 && table[kCodePage] != kUnsaid) return std::nullopt;
  const std::size_t head = NumberAt(table, 8, 2);
  return LikelyEncoding(std::string_view(table).substr(std::min(head, table.size())));
}

[[noreturn]] void RefuseFormat(const std::string& path, const std::string& reason) {
  const FileLooks looks = LooksOfFile(path);
  const bool isOther = looks.kind != FileKind::unknown && looks.kind != FileKind::json &&
                       looks.kind != FileKind::geodata;
  if (isOther) {
    throw Failed(path,
                 "looks like " + std::string(looks.name) +
                     ", not like GeoJSON, TopoJSON, a Shapefile, a GeoPackage or a FlatGeobuf");
  }
  throw Failed(path, reason.empty() ? "is no GeoJSON, TopoJSON, Shapefile, GeoPackage or FlatGeobuf"
                                    : "cannot be read: " + reason);
}

// A number as people wrote it: files keep the nearest double, whose last digits are not theirs.
std::string PlainNumber(double value, int digits) {
  if (!std::isfinite(value)) return {};
  std::array<char, 32> text;
  const auto result = std::to_chars(text.data(), text.data() + text.size(), value,
                                    std::chars_format::general, digits);
  return {text.data(), result.ptr};
}

std::string Decoded(const char* text, std::optional<Encoding> encoding) {
  return encoding ? ToUtf8(text, *encoding, "a text") : std::string(text);
}

std::string FieldText(const OGRFeature& feature, int field, std::optional<Encoding> encoding) {
  if (feature.IsFieldSetAndNotNull(field) == FALSE) return {};
  const OGRFieldDefn& definition = *feature.GetFieldDefnRef(field);
  if (definition.GetType() == OFTReal) {
    constexpr int kFloatDigits = 7;
    constexpr int kDoubleDigits = 15;
    return PlainNumber(feature.GetFieldAsDouble(field),
                       definition.GetSubType() == OFSTFloat32 ? kFloatDigits : kDoubleDigits);
  }
  std::string text = Decoded(feature.GetFieldAsString(field), encoding);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  return std::string(TrimBlanks(text));
}

// Whether a layer's extent is that of longitudes and latitudes. Points that are no numbers, which
// are left out later, make one without sense.
bool MayBeDegrees(OGRLayer& layer) {
  constexpr double kMostLongitude = 360.0;
  constexpr double kMostLatitude = 90.0;
  OGREnvelope extent;
  if (layer.GetExtent(&extent, TRUE) != OGRERR_NONE) return true;
  const auto isWithin = [](double value, double most) {
    return !std::isfinite(value) || std::abs(value) <= most;
  };
  return isWithin(extent.MinX, kMostLongitude) && isWithin(extent.MaxX, kMostLongitude) &&
         isWithin(extent.MinY, kMostLatitude) && isWithin(extent.MaxY, kMostLatitude);
}

std::shared_ptr<OGRSpatialReference> SystemNamed(const std::string& name, const char* option) {
  auto system = std::make_shared<OGRSpatialReference>();
  const LibraryListener listener;
  const bool isName = name.find_first_of("/\\") == std::string::npos;
  if (!isName || system->SetFromUserInput(
                     name.c_str(), OGRSpatialReference::SET_FROM_USER_INPUT_LIMITATIONS_get()) !=
                     OGRERR_NONE) {
    throw WrongRequest(std::string(option) + ": " + Quoted(name) +
                       " is no coordinate system such as EPSG:5070");
  }
  system->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  return system;
}

}  // namespace

struct GeoFile::Source {
  GDALDatasetUniquePtr data;
  OGRLayer* layer = nullptr;
  Coordinates coordinates;
  std::shared_ptr<OGRSpatialReference> system;  // of the file; null when nobody says
  bool isProjected = false;
  bool mapInDegrees = false;
  std::optional<Encoding> encoding;  // of texts that come as the bytes that they are in the file
};

GeoFile::GeoFile(const std::string& path, const std::string& layer,
                 std::optional<Encoding> encoding)
    : path_(path), source_(std::make_unique<Source>()) {
  RegisterFormats();
  const std::string safe = SafePath(path);
  const std::string extension = std::filesystem::path(path).extension().string();
  const bool isShapefile = EqualNoCase(extension, ".shp");
  if (EqualNoCase(extension, ".dbf") || EqualNoCase(extension, ".shx")) {
    throw Failed(path, "is a part of a Shapefile; give " + Sibling(path, ".shp"));
  }
  if (isShapefile) {
    CheckShapefile(path);
    source_->encoding = UnsaidEncoding(safe);
    if (source_->encoding && encoding) source_->encoding = encoding;
  }
  if (isShapefile && !encoding && source_->encoding) {
    notes_.push_back(path + ": does not say in which encoding its texts are; read as " +
                     std::string(NameOf(*source_->encoding)) + " (--encoding decides)");
  }
  const std::array<const char*, 2> options{source_->encoding ? "ENCODING=" : nullptr, nullptr};
  const LibraryListener listener;
  source_->data.reset(GDALDataset::Open(safe.c_str(), GDAL_OF_VECTOR | GDAL_OF_VERBOSE_ERROR,
                                        kFormats.data(), options.data()));
  if (source_->data == nullptr) RefuseFormat(path, listener.Failure());
  driver_ = source_->data->GetDriverName();

  std::vector<std::string> names;
  for (OGRLayer* each : source_->data->GetLayers()) names.emplace_back(each->GetName());
  const std::vector<std::string_view> views(names.begin(), names.end());
  if (names.empty()) throw Failed(path, "has no layer of areas");
  if (layer.empty() && names.size() > 1) {
    throw WrongRequest(path + " has several layers; choose one with --layer: " + Joined(views));
  }
  source_->layer =
      layer.empty() ? source_->data->GetLayer(0) : source_->data->GetLayerByName(layer.c_str());
  if (source_->layer == nullptr) {
    const std::string hint = Hint(layer, views);
    throw WrongRequest(path + " has no layer " + Quoted(layer) +
                       (hint.empty() ? "; it has " + Joined(views) : hint));
  }
  layer_ = source_->layer->GetName();
  const OGRFeatureDefn& definition = *source_->layer->GetLayerDefn();
  for (int i = 0; i < definition.GetFieldCount(); ++i) {
    fields_.push_back(Decoded(definition.GetFieldDefn(i)->GetNameRef(), source_->encoding));
  }
}

GeoFile::~GeoFile() = default;

std::optional<std::size_t> GeoFile::FindField(std::string_view name) const {
  const auto exact = std::find(fields_.begin(), fields_.end(), name);
  if (exact != fields_.end()) return static_cast<std::size_t>(exact - fields_.begin());
  const auto isSame = [=](const std::string& field) { return EqualNoCase(field, name); };
  const auto first = std::find_if(fields_.begin(), fields_.end(), isSame);
  if (first != fields_.end() && std::none_of(first + 1, fields_.end(), isSame)) {
    return static_cast<std::size_t>(first - fields_.begin());
  }
  if (EqualNoCase(name, "fid")) return fields_.size();
  return std::nullopt;
}

std::size_t GeoFile::FieldNamed(std::string_view name) const {
  if (const std::optional<std::size_t> found = FindField(name)) return *found;
  const std::vector<std::string_view> views(fields_.begin(), fields_.end());
  const std::string hint = Hint(name, views);
  throw WrongRequest(path_ + " has no field " + Quoted(name) +
                     (!hint.empty()     ? hint
                      : fields_.empty() ? "; it has none but fid, the numbers of its features"
                                        : "; it has " + Joined(views)));
}

void GeoFile::ChooseCoordinates(const CrsChoice& choice) {
  const LibraryListener listener;
  std::shared_ptr<OGRSpatialReference>& system = source_->system;
  if (!choice.source.empty()) {
    system = SystemNamed(choice.source, "--source-crs");
  } else if (const OGRSpatialReference* said = source_->layer->GetSpatialRef()) {
    system.reset(said->Clone());
    system->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  }
  const bool maybeDegrees = MayBeDegrees(*source_->layer);
  const bool saysDegrees = system != nullptr && system->IsGeographic() != FALSE;
  source_->coordinates.inDegrees = maybeDegrees && (saysDegrees || system == nullptr);
  if (system == nullptr) {
    notes_.push_back(path_ + ": names no coordinate system; its coordinates are taken for " +
                     (maybeDegrees ? "longitude and latitude" : "those of a plane"));
  } else if (saysDegrees && !maybeDegrees) {
    notes_.push_back(path_ +
                     ": its coordinates are no longitudes and latitudes, though it says so;"
                     " they are taken for those of a plane");
    if (!choice.target.empty() && choice.source.empty()) {
      throw Failed(path_,
                   "its coordinates are no longitudes and latitudes, though it says so; name"
                   " their system with --source-crs");
    }
  }
  source_->mapInDegrees = source_->coordinates.inDegrees;
  if (choice.target.empty()) return;
  source_->isProjected = true;
  const std::shared_ptr<OGRSpatialReference> target = SystemNamed(choice.target, "--crs");
  if (system == nullptr && maybeDegrees) system = SystemNamed("EPSG:4326", "--source-crs");
  if (system == nullptr) {
    throw WrongRequest("--crs: " + path_ +
                       " names no coordinate system; tell it with --source-crs");
  }
  source_->mapInDegrees = target->IsGeographic() != FALSE;
  source_->coordinates.projection.reset(
      OGRCreateCoordinateTransformation(system.get(), target.get()));
  if (source_->coordinates.projection == nullptr) {
    throw Failed(path_, "its coordinates cannot be projected to " + choice.target + ": " +
                            listener.Failure());
  }
}

bool GeoFile::InDegrees() const { return source_->mapInDegrees; }

bool GeoFile::Fits(const GeoFile& other) const {
  if (InDegrees() != other.InDegrees()) return false;
  if (InDegrees() || source_->isProjected) return true;
  const OGRSpatialReference* const mine = source_->system.get();
  const OGRSpatialReference* const its = other.source_->system.get();
  return mine == nullptr || its == nullptr || mine->IsSame(its) != FALSE;
}

long long GeoFile::FeatureCount() const { return source_->layer->GetFeatureCount(FALSE); }

std::vector<Feature> GeoFile::Read(const std::vector<std::size_t>& fields, int nameField,
                                   Flaws& flaws, const std::function<void()>& step) {
  const LibraryListener listener;
  std::vector<Feature> features;
  source_->layer->ResetReading();
  while (OGRFeatureUniquePtr read{source_->layer->GetNextFeature()}) {
    Feature& feature = features.emplace_back();
    feature.values.reserve(fields.size());
    for (const std::size_t field : fields) {
      feature.values.push_back(field < fields_.size()
                                   ? FieldText(*read, static_cast<int>(field), source_->encoding)
                                   : std::to_string(read->GetFID()));
    }
    std::string name =
        nameField < 0 ? std::string() : feature.values[static_cast<std::size_t>(nameField)];
    if (name.empty()) name = "feature " + std::to_string(features.size());
    feature.shape = ShapeOf(std::unique_ptr<OGRGeometry>(read->StealGeometry()),
                            source_->coordinates, name, flaws);
    step();
  }
  if (listener.HasFailed()) {
    throw Failed(path_, "cannot be read behind feature " + std::to_string(features.size()) + ": " +
                            listener.Failure());
  }
  for (const std::string& warning : listener.Warnings()) notes_.push_back(path_ + ": " + warning);
  return features;
}

}  // namespace vexel::import
