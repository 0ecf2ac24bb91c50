// The texts that the library shows its user, by number.

#ifndef VEXEL_MESSAGES_MESSAGES_H_
#define VEXEL_MESSAGES_MESSAGES_H_

#include <concepts>
#include <string>
#include <string_view>
#include <vector>

#include "platform/export.h"
#include "platform/file.h"
#include "platform/host.h"
#include "platform/string.h"

namespace vexel {

enum class Message : int {
  badCoordinates = 16000,
  errorAtLine = 16001,
  badAreaStructure = 16002,
  compiledMapNotOpened = 16003,
  invalidMapFile = 16004,
  loadingMap = 16005,
  noMapHeading = 16006,
  mapNotLoaded = 16007,
  noAreaLevels = 16008,
  invalidHeading = 16009,
  unrecognizedCommand = 16010,
  missingPolygons = 16011,
  noData = 16012,
  notADataFile = 16013,
  sameSeparators = 16014,
  missingStatement = 16016,
  unknownVersion = 16018,
  noMapFileGiven = 16020,
  mapFileNotFound = 16021,
  invalidThousands = 16022,
  invalidDecimal = 16023,
  tooFewLevelNames = 16024,
  tooFewVariableNames = 16025,
  areaLevelMissing = 16026,
  areaNotInMap = 16027,
  tooManyValues = 16028,
  tooFewValues = 16029,
  mapFileNotWritten = 16030,
  dataFileNotOpened = 16031,
  noFloatCoordinates = 16032,
  compiledMapNotWritten = 16033,
  // From here on what guards the limits of this implementation.
  invalidParameterAtLine = 16101,
  groupsTooDeep = 16102,
  writeFailed = 16103,
  readFailed = 16104,
  // What the exceptions of a compiled map say.
  compiledEndsEarly = 16105,
  compiledTooDeep = 16106,
  halvesDiffer = 16107,
};

// The text of a message, with its %d and %s unfilled; from 16201 on the sentence of a remark. A
// number that is not in the table gives "Unknown message %d".
VEXEL_API std::string_view MessageText(Message number) noexcept;

// The text with its %d and %s replaced, in order, by the given texts.
VEXEL_API CString FillMessage(Message number, const std::vector<std::string>& values);

inline std::string MessageValue(std::string_view text) { return std::string(text); }
inline std::string MessageValue(const char* text) { return text; }
inline std::string MessageValue(const CString& text) { return std::string(text.View()); }
inline std::string MessageValue(std::integral auto number) { return std::to_string(number); }

// The same with values of any printable kind: FormatMessage(Message::errorAtLine, 12).
template <typename... Values>
CString FormatMessage(Message number, const Values&... values) {
  return FillMessage(number, {MessageValue(values)...});
}

// A message with its text made from the values. `about` brings what is known beside the text.
template <typename... Values>
MessageInfo MakeMessage(unsigned flags, Message number, MessageInfo about,
                        const Values&... values) {
  about.number = static_cast<int>(number);
  about.flags = flags;
  about.text = FormatMessage(number, values...);
  return about;
}

// Tells the user through the current host and gives the answer. This is the one way by which the
// library speaks:
//   Tell(CHost::warning, Message::readFailed, {.file = path.View()}, path);
int Tell(const MessageInfo& message);

template <typename... Values>
int Tell(unsigned flags, Message number, const MessageInfo& about, const Values&... values) {
  return Tell(MakeMessage(flags, number, about, values...));
}

// A message whose one value is the path of a file that the system refused, with the reason.
int TellOfFile(unsigned flags, Message number, const CFile& file, const CString& path);

}  // namespace vexel

#endif  // VEXEL_MESSAGES_MESSAGES_H_
