// What a reader takes as its rules say, though a user will hardly have meant it.

#ifndef VEXEL_PLATFORM_REMARK_H_
#define VEXEL_PLATFORM_REMARK_H_

#include <string_view>

#include "platform/export.h"

namespace vexel {

// The numbers are those of the sentences in messages/remarks.cpp, which also has a short name for
// each.
enum class RemarkKind : int {
  // Numbers: of values, codes, counts and coordinates.
  notANumber = 16201,
  numberInPart = 16202,
  beyondRange = 16203,
  oddGrouping = 16204,
  manyDecimals = 16205,
  // Geometry.
  surplusCoordinates = 16211,
  beyondDegrees = 16212,
  jumpAcrossDateLine = 16213,
  shortRing = 16214,
  latitudeFirst = 16215,
  coarseNearEquator = 16216,
  holeInDoubt = 16217,
  // Areas.
  duplicateKey = 16221,
  keyOfAnotherParent = 16222,
  keyOfAnotherLevel = 16223,
  noKey = 16224,
  noName = 16225,
  notUtf8 = 16226,
  noEndGroup = 16227,
  surplusEndGroup = 16228,
  // Tables.
  emptyCell = 16231,
  blanksAroundCell = 16232,
  surplusHeading = 16233,
  duplicateRow = 16234,
  noRows = 16235,
  // Words.
  blanksInWord = 16241,
  unknownVersion = 16242,
  neitherYesNorNo = 16243,
  repeatedKeyword = 16244,
  // Files.
  notOpened = 16251,
  writtenInPlace = 16252,
  endsInFloats = 16253,
};

// Where the doubt is and what it is about. What is not known or does not matter is empty or 0. The
// views are good during the call that hands them over.
struct RemarkInfo {
  RemarkKind kind{};
  std::string_view file = {};        // the path as the library was given it
  int line = 0;                      // counted from 1
  std::string_view area = {};        // the codes of its key, "12, 3"
  int column = 0;                    // number of the variable, counted from 1
  std::string_view columnName = {};  // of whatever column of a table; "x" or "y" of a coordinate
  std::string_view found = {};       // the text that stands there
  std::string_view taken = {};       // what it is taken for
  int expected = 0;
  int counted = 0;
  std::string_view reason = {};  // why the system refused
};

}  // namespace vexel

#endif  // VEXEL_PLATFORM_REMARK_H_
