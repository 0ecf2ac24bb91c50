// The sentences of remarks.

#ifndef VEXEL_MESSAGES_REMARKS_H_
#define VEXEL_MESSAGES_REMARKS_H_

#include <span>
#include <string>
#include <string_view>

#include "platform/export.h"
#include "platform/remark.h"

namespace vexel {

// One kind of remark. In the sentence %f stands for the text found, %t for what it is taken for, %e
// and %n for the numbers expected and counted, %c for the column's name and %r for the system's
// reason.
struct RemarkEntry {
  RemarkKind kind;
  std::string_view name;  // for scripts: "not-a-number"
  std::string_view sentence;
};

// All kinds, by ascending number.
VEXEL_API std::span<const RemarkEntry> AllRemarks() noexcept;

// The entry of a kind; one of empty texts for a number without one.
VEXEL_API const RemarkEntry& RemarkEntryOf(RemarkKind kind) noexcept;

// The remark as one line without a line end: "m.mdf:14: area 12, 3, column 5 (Births): "12%" is
// read as 12". A long text found is cut.
VEXEL_API std::string RemarkSentence(const RemarkInfo& remark);

// The shortest text of a number, for what a remark says it is taken for.
std::string ShortestText(double value);
std::string ShortestText(float value);

}  // namespace vexel

#endif  // VEXEL_MESSAGES_REMARKS_H_
