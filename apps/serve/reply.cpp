#include "apps/serve/reply.h"

#include <vexel/brindle/text.h>

#include <algorithm>

#include "kit/request/query.h"
#include "kit/request/values.h"

namespace vexel::serve {

namespace {

constexpr std::string_view kSafety =
    "X-Content-Type-Options: nosniff\r\n"
    "Referrer-Policy: same-origin\r\n"
    "Cross-Origin-Resource-Policy: same-origin\r\n";

// Everything comes from this server. A picture opened alone brings the style of its own and needs
// nothing else.
constexpr std::string_view kPagePolicy =
    "Content-Security-Policy: default-src 'self'; base-uri 'none'; form-action 'self'; "
    "object-src 'none'; frame-ancestors 'none'\r\n";
constexpr std::string_view kPicturePolicy =
    "Content-Security-Policy: default-src 'none'; style-src 'unsafe-inline'; "
    "frame-ancestors 'none'\r\n";

std::string_view Trimmed(std::string_view text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

// True for "q=0", "q=0.00" and their like among the parameters of a coding.
bool IsRefused(std::string_view parameters) {
  const auto parts = Split(parameters, ';');
  return std::any_of(parts.begin(), parts.end(), [](std::string_view part) {
    part = Trimmed(part);
    return (part.starts_with("q=") || part.starts_with("Q=")) && part.size() > 2 &&
           part.substr(2).find_first_not_of("0.") == std::string_view::npos;
  });
}

std::string_view LastingLine(Lasting lasting) {
  switch (lasting) {
    case Lasting::forever:
      return "Cache-Control: public, max-age=31536000, immutable\r\n";
    case Lasting::checked:
      return "Cache-Control: no-cache\r\n";
    default:
      return "Cache-Control: no-store\r\n";
  }
}

// The name as ASCII for old programs, and whole behind it.
std::string DispositionLine(const Answer& answer) {
  std::string plain = answer.fileName;
  std::replace_if(
      plain.begin(), plain.end(),
      [](char c) { return c < ' ' || c > '~' || c == '"' || c == '\\' || c == '%'; }, '_');
  return std::string("Content-Disposition: ") + (answer.isDownload ? "attachment" : "inline") +
         "; filename=\"" + plain + "\"; filename*=UTF-8''" + PercentEncoded(answer.fileName) +
         "\r\n";
}

void AppendEntityLines(std::string& head, const Answer& answer, bool isZipped) {
  if (!answer.tag.empty()) {
    head.append("ETag: \"").append(answer.tag).append(isZipped ? "-gz\"\r\n" : "\"\r\n");
  }
  if (!answer.zipped.empty()) head += "Vary: Accept-Encoding\r\n";
  head += LastingLine(answer.lasting);
}

}  // namespace

bool TakesGzip(std::string_view accepted) {
  bool takesAny = false;
  for (const std::string_view coding : Split(accepted, ',')) {
    const std::size_t end = std::min(coding.find(';'), coding.size());
    const std::string_view name = Trimmed(coding.substr(0, end));
    const bool isTaken = !IsRefused(coding.substr(end));
    if (EqualNoCase(name, "gzip") || EqualNoCase(name, "x-gzip")) return isTaken;
    if (name == "*") takesAny = isTaken;
  }
  return takesAny;
}

bool HasTag(std::string_view known, std::string_view tag) {
  const auto tags = Split(known, ',');
  return std::any_of(tags.begin(), tags.end(), [=](std::string_view each) {
    each = Trimmed(each);
    if (each == "*") return true;
    if (each.starts_with("W/")) each.remove_prefix(2);
    return each.size() == tag.size() + 2 && each.front() == '"' && each.back() == '"' &&
           each.substr(1, tag.size()) == tag;
  });
}

Reply ReplyTo(const Asking& asking, const Answer& answer) {
  const bool isZipped = !answer.zipped.empty() && TakesGzip(asking.accepted);
  Reply reply{answer.status, {}, isZipped ? answer.zipped : answer.body};
  const std::string tag = answer.tag + (isZipped ? "-gz" : "");
  if (answer.status == Status::ok && !answer.tag.empty() && HasTag(asking.known, tag)) {
    reply.status = Status::notModified;
  }
  std::string& head = reply.head;
  head = "HTTP/1.1 " + std::to_string(static_cast<int>(reply.status)) + ' ';
  head.append(ReasonOf(reply.status)).append("\r\nServer: vexel\r\n");
  AppendEntityLines(head, answer, isZipped);
  head += kSafety;
  const bool isVector = answer.type.starts_with("image/svg");
  head += isVector ? kPicturePolicy : kPagePolicy;
  if (reply.status == Status::notModified) {
    reply.body = {};
  } else {
    head.append("Content-Type: ").append(answer.type).append("\r\n");
    head += "Content-Length: " + std::to_string(reply.body.size()) + "\r\n";
    if (isZipped) head += "Content-Encoding: gzip\r\n";
    if (!answer.fileName.empty()) head += DispositionLine(answer);
    if (!answer.location.empty()) head += "Location: " + answer.location + "\r\n";
  }
  head += answer.extra;
  head += asking.keepsAlive ? "Connection: keep-alive\r\n\r\n" : "Connection: close\r\n\r\n";
  if (asking.method == "HEAD") reply.body = {};
  return reply;
}

}  // namespace vexel::serve
