// What the server answers, ready to be sent as often as it is asked for.

#ifndef VEXEL_APPS_SERVE_ANSWER_H_
#define VEXEL_APPS_SERVE_ANSWER_H_

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vexel::serve {

enum class Status : int {
  ok = 200,
  seeOther = 303,
  notModified = 304,
  badRequest = 400,
  forbidden = 403,
  notFound = 404,
  methodNotAllowed = 405,
  bodyTooLarge = 413,
  targetTooLong = 414,
  headTooLarge = 431,
  failed = 500,
  notInstalled = 501,
  busy = 503,
  wrongVersion = 505,
};

std::string_view ReasonOf(Status status);

// How long whoever keeps a copy may use it.
enum class Lasting {
  never,    // it is of this moment
  checked,  // as long as the server says, when asked, that it is still so
  forever,  // its address changes when it does
};

struct Answer {
  Status status = Status::ok;
  std::string_view kind = "error";  // for the metrics; text of the program
  std::string type;                 // media type
  std::string body;
  std::string zipped;  // the body packed by gzip; empty: it is not worth it
  std::string tag;     // the same for equal bodies; empty: it is not to be kept
  Lasting lasting = Lasting::never;
  std::string location;      // of a redirection
  std::string fileName;      // under which a browser keeps it; UTF-8
  bool isDownload = false;   // it is kept rather than shown
  std::string_view extra{};  // whole header lines

  std::size_t Weight() const { return sizeof(Answer) + body.size() + zipped.size(); }
};

using AnswerPtr = std::shared_ptr<const Answer>;

// A text of letters and digits, the same for equal bodies and hardly for others.
std::string TagOf(std::string_view body);

// Fills in tag and packed form of an answer that may be kept.
void Finish(Answer& answer);

// What gzip makes of a text; empty when memory is short.
std::string Gzipped(std::string_view text);

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_ANSWER_H_
