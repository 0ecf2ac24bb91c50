// From an answer to what goes over the line: which form of it, and the head.

#ifndef VEXEL_APPS_SERVE_REPLY_H_
#define VEXEL_APPS_SERVE_REPLY_H_

#include <string>
#include <string_view>

#include "apps/serve/answer.h"

namespace vexel::serve {

// What of a request counts here, as it came.
struct Asking {
  std::string method = {};
  std::string target = {};
  std::string host = {};
  std::string accepted = {};  // Accept-Encoding
  std::string known = {};     // If-None-Match
  bool keepsAlive = true;
};

struct Reply {
  Status status = Status::ok;
  std::string head;       // with the empty line at its end
  std::string_view body;  // of the answer, which must outlive it
};

Reply ReplyTo(const Asking& asking, const Answer& answer);

// Whether a list of codings takes gzip.
bool TakesGzip(std::string_view accepted);

// Whether a list of entity tags, or "*", has that one, weak or strong.
bool HasTag(std::string_view known, std::string_view tag);

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_REPLY_H_
