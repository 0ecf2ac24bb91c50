// The host's say: the one interface through which the library reaches whoever uses it.

#ifndef VEXEL_PLATFORM_HOST_H_
#define VEXEL_PLATFORM_HOST_H_

#include <string_view>

#include "platform/export.h"
#include "platform/remark.h"
#include "platform/string.h"

namespace vexel {

// A message with what it is made of beside its text, so that a host need not take the text apart.
// What is not known is empty or 0. The views are good during the call that hands them over.
struct MessageInfo {
  int number = 0;                // of the table of messages
  CString text = {};             // what the user reads
  unsigned flags = 0;            // CHost::BoxFlags
  std::string_view file = {};    // the path as the library was given it
  int line = 0;                  // counted from 1
  std::string_view area = {};    // the codes of its key, "12, 3"
  std::string_view name = {};    // of the area
  std::string_view found = {};   // what stands in the file and gives the offence
  std::string_view reason = {};  // why the system refused
};

}  // namespace vexel

// A host derives from this, overrides what it cares for and installs its object with SetCurrent.
// The base class is the default host: it writes boxes to standard error, answers OK, shows no
// progress and never cancels, and has no profile.
class VEXEL_API CHost {
 public:
  // Styles of a box and its answers.
  enum BoxFlags : unsigned {
    ok = 0,
    okCancel = 1,
    error = 0x10,
    warning = 0x30,
    information = 0x40
  };
  enum BoxAnswer : int { answerOk = 1, answerCancel = 2 };

  CHost() = default;
  CHost(const CHost&) = delete;
  CHost& operator=(const CHost&) = delete;
  virtual ~CHost() = default;

  // Shows a text in a modal box and returns the answer.
  virtual int ShowBox(const CString& text, unsigned flags);

  // Tells a message of the library and returns the answer, which is asked for where the flags say
  // so. Shows the text in a box; a host that wants more than the text overrides this.
  virtual int ShowMessage(const vexel::MessageInfo& message);

  // Hears what a reader takes though it is doubtful; the load goes on whatever a host does with it.
  // There may be as many as the file has places. vexel::RemarkSentence makes a line of one.
  virtual void Remark(const vexel::RemarkInfo& /*remark*/) {}

  // A progress dialog: opened, told its text and range, moved, asked for a cancel, closed. At most
  // one is open on a thread at a time.
  virtual void OpenProgress() {}
  virtual void SetProgressText(const CString& /*text*/) {}
  virtual void SetProgressRange(int /*lower*/, int /*upper*/) {}
  virtual void SetProgressPosition(int /*position*/) {}
  virtual bool ProgressCancelled() { return false; }
  virtual void CloseProgress() {}

  // The wait cursor; calls come in pairs and may nest.
  virtual void BeginWaitCursor() {}
  virtual void EndWaitCursor() {}

  // An entry of the machine's profile, such as section "intl", key "sDecimal". A host without an
  // answer gives back the default; an entry that exists with no text gives the empty string.
  virtual CString GetProfileText(const char* section, const char* key, const char* defaultText);

  // The host of the calling thread: the one installed there, else the default host.
  static CHost& GetCurrent();

  // Installs a host for the calling thread and returns the one before it; null stands for the
  // default host. The object stays the caller's and must outlive its being current.
  static CHost* SetCurrent(CHost* host);
};

// Shows a box through the current host; the last argument is a help number and not used.
VEXEL_API int AfxMessageBox(const CString& text, unsigned flags, unsigned help);

namespace vexel {

// The wait cursor for as long as the object lives, so that it ends on every road out.
class WaitCursor {
 public:
  WaitCursor() { CHost::GetCurrent().BeginWaitCursor(); }
  ~WaitCursor() { CHost::GetCurrent().EndWaitCursor(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};

}  // namespace vexel

#endif  // VEXEL_PLATFORM_HOST_H_
