#include "messages/messages.h"

#include <algorithm>
#include <array>

#include "messages/remarks.h"

namespace vexel {

namespace {

struct Entry {
  Message number;
  std::string_view text;
};

constexpr std::array kTexts{
    Entry{Message::badCoordinates, "Bad coordinates at line %d"},
    Entry{Message::errorAtLine, "Error at line %d\n%s"},
    Entry{Message::badAreaStructure, "Bad area structure at line %d\n%s"},
    Entry{Message::compiledMapNotOpened, "Error: could not open compiled map file %s for reading"},
    Entry{Message::invalidMapFile, "'MapFile' parameter points to invalid file:  %s"},
    Entry{Message::loadingMap, "Loading map file ... please wait"},
    Entry{Message::noMapHeading, "Didn't find [MAP] section heading"},
    Entry{Message::mapNotLoaded, "Map file not loaded."},
    Entry{Message::noAreaLevels, "No AreaLevels in map file"},
    Entry{Message::invalidHeading, "Invalid section heading at line %d:\n%s"},
    Entry{Message::unrecognizedCommand, "Unrecognized command at line %d:\n%s"},
    Entry{Message::missingPolygons,
          "WARNING:  .MAP file has GeoGroup(s) and/or GeoUnit(s) with no polygons"},
    Entry{Message::noData, "<no data>"},
    Entry{Message::notADataFile, "Not a valid Atlas Desk data file"},
    Entry{Message::sameSeparators, "%s parameter must not be the same as %s parameter"},
    Entry{Message::missingStatement, "Missing %s statement"},
    Entry{Message::unknownVersion, "Spec file version is not %s or %s; try to load it anyway?"},
    Entry{Message::noMapFileGiven, "No Map File specified in Ortex Map Data File"},
    Entry{Message::mapFileNotFound, "Can't find Ortex Map File:  %s"},
    Entry{Message::invalidThousands, "Invalid Thousands parameter"},
    Entry{Message::invalidDecimal, "Invalid Decimal parameter"},
    Entry{Message::tooFewLevelNames, "Not enough area level names at line %d"},
    Entry{Message::tooFewVariableNames, "Not enough variable names at line %d"},
    Entry{Message::areaLevelMissing, "Area Level value missing at line %d"},
    Entry{Message::areaNotInMap,
          "Area in .MDF not found in map file:\n\nName  =  %s\nAreaCodes  =  %s"},
    Entry{Message::tooManyValues, "Too many data values at line %d"},
    Entry{Message::tooFewValues, "Not enough data values at line %d"},
    Entry{Message::mapFileNotWritten, "Can not open map file %s"},
    Entry{Message::dataFileNotOpened, "Can not open map data file %s"},
    Entry{Message::noFloatCoordinates,
          "Can't save .MPC file; no floating point coordinates loaded."},
    Entry{Message::compiledMapNotWritten, "Can not open compiled map file %s"},
    Entry{Message::invalidParameterAtLine, "Invalid %s parameter at line %d"},
    Entry{Message::groupsTooDeep, "Groups nested too deeply at line %d"},
    Entry{Message::writeFailed, "Can not write file %s"},
    Entry{Message::readFailed, "Can not read file to its end:  %s"},
    Entry{Message::compiledEndsEarly, "the compiled file ends early"},
    Entry{Message::compiledTooDeep, "the areas are nested too deeply"},
    Entry{Message::halvesDiffer, "the two halves of the compiled file do not fit each other"},
};

constexpr std::string_view kUnknown = "Unknown message %d";

}  // namespace

std::string_view MessageText(Message number) noexcept {
  const auto* found = std::find_if(kTexts.begin(), kTexts.end(),
                                   [=](const Entry& entry) { return entry.number == number; });
  if (found != kTexts.end()) return found->text;
  const std::string_view remark = RemarkEntryOf(static_cast<RemarkKind>(number)).sentence;
  return remark.empty() ? kUnknown : remark;
}

CString FillMessage(Message number, const std::vector<std::string>& values) {
  std::string_view rest = MessageText(number);
  std::string filled;
  for (const std::string& value : values) {
    const std::size_t mark = rest.find('%');
    if (mark == std::string_view::npos) break;
    filled.append(rest.substr(0, mark)).append(value);
    rest.remove_prefix(mark + 2);
  }
  return CString(filled.append(rest));
}

int Tell(const MessageInfo& message) { return CHost::GetCurrent().ShowMessage(message); }

int TellOfFile(unsigned flags, Message number, const CFile& file, const CString& path) {
  const std::string reason = file.GetReason();
  return Tell(flags, number, {.file = path.View(), .reason = reason}, path);
}

}  // namespace vexel
