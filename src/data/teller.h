// How the readers of a data file speak.

#ifndef VEXEL_DATA_TELLER_H_
#define VEXEL_DATA_TELLER_H_

#include <string>
#include <string_view>

#include "brindle/specfile.h"
#include "brindle/text.h"
#include "messages/messages.h"
#include "platform/host.h"
#include "platform/remark.h"

namespace vexel {

// Keeps the text of each message where the host of a data set can read it, and shows it unless the
// load is quiet. Remarks go to the host, quiet or not.
class DataTeller {
 public:
  DataTeller(CVELAString& error, const CSpecFile& file, int quiet) noexcept
      : error_(error), file_(file), quiet_(quiet) {}

  // A message about the line that the file is at, to which OK is the only answer.
  template <typename... Values>
  void Tell(Message number, std::string_view found, const Values&... values) {
    Show(MakeMessage(CHost::ok, number, Here(found), values...));
  }

  // Gives the answer, OK when nothing is shown.
  int Show(const MessageInfo& message) {
    error_ = message.text;
    return quiet_ != 0 ? CHost::answerOk : vexel::Tell(message);
  }

  // A message whose one value is the path of the file, which the system refused.
  void TellOfFile(Message number, const CString& path) {
    const std::string reason = file_.GetReason();
    Show(MakeMessage(CHost::ok, number, {.file = path.View(), .reason = reason}, path));
  }

  MessageInfo Here(std::string_view found) const {
    return {.file = file_.GetPath(), .line = file_.lineNumber, .found = found};
  }

  // A remark about the line that the file is at, and one about the file as a whole.
  void Remark(RemarkInfo remark) const {
    remark.line = file_.lineNumber;
    RemarkOnFile(remark);
  }
  void RemarkOnFile(RemarkInfo remark) const {
    remark.file = file_.GetPath();
    CHost::GetCurrent().Remark(remark);
  }

  void RemarkOnName(std::string_view name, std::string_view columnName) const {
    if (!IsUtf8(name))
      Remark({.kind = RemarkKind::notUtf8, .columnName = columnName, .found = name});
  }

 private:
  CVELAString& error_;
  const CSpecFile& file_;
  int quiet_;
};

}  // namespace vexel

#endif  // VEXEL_DATA_TELLER_H_
