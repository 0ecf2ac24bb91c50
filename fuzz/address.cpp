// The head of a request, as far as it is read: target, host, codings and tags, a line each. A state
// that was read has one normal form, which reads back as itself and stands in an answer's head and
// in the log without doing harm there.

#include <string>
#include <string_view>

#include "apps/serve/access_log.h"
#include "apps/serve/reply.h"
#include "apps/serve/route.h"
#include "kit/request/markup.h"
#include "kit/request/query.h"
#include "program.h"
#include "scratch.h"

namespace vexel::cli {
const Program kProgram{"vexel-serve", "vexel serve", "gif"};
}  // namespace vexel::cli

namespace {

using namespace vexel;
using namespace vexel::serve;
using fuzz::Require;

std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

bool IsPrintable(std::string_view text) {
  return text.find_first_not_of(
             " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`"
             "abcdefghijklmnopqrstuvwxyz{|}~") == std::string_view::npos;
}

void CheckState(const Show& show) {
  const std::string address = AddressOf(show);
  Require(IsPrintable(address), "an address is plain text");
  const Route again = RouteOf(address, "");
  Require(again.place == Place::show, "a normal form leads to a page");
  Require(again.target.part == Part::page, "and to nothing else");
  Require(again.target.show.problems.empty(), "without problems");
  Require(AddressOf(again.target.show) == address, "which has the same normal form");
  Require(again.target.show.set == show.set, "of the same set");
  const std::string picture = AddressOf(show, Part::gif);
  Require(AddressOf(RouteOf(picture, "").target.show, Part::gif) == picture, "so has a picture's");
  Require(show.request.data.empty() && show.request.map.empty(), "files are no part of it");
  Require(show.request.size.width <= kLongestSide && show.request.size.height <= kLongestSide,
          "no picture is larger than may be");
}

void CheckReply(const Asking& asking) {
  Answer answer;
  answer.type = "text/html";
  answer.body = asking.target;
  answer.fileName = asking.target;
  answer.lasting = Lasting::checked;
  Finish(answer);
  const Reply reply = ReplyTo(asking, answer);
  Require(reply.head.find("\r\n\r\n") == reply.head.size() - 4, "a head ends once");
  Require(reply.status == Status::ok || HasTag(asking.known, answer.tag) ||
              HasTag(asking.known, answer.tag + "-gz"),
          "only who has it keeps it");
  for (const LogForm form : {LogForm::text, LogForm::json}) {
    const std::string line =
        LogLine({.time = {}, .client = "", .method = "GET", .target = asking.target}, form);
    Require(line.find('\n') == line.size() - 1, "a log has one line for an answer");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  std::string_view text = fuzz::AsText(bytes, size);
  Asking asking;
  asking.method = "GET";
  asking.target = TakeLine(text);
  asking.host = TakeLine(text);
  asking.accepted = TakeLine(text);
  asking.known = TakeLine(text);
  const Route route = RouteOf(asking.target, "");
  Require((route.place == Place::nowhere) == (route.status != Status::ok), "it leads somewhere");
  if (route.place == Place::show) CheckState(route.target.show);
  static const HostNames kNames({"maps.example.org"});
  if (kNames.Has(asking.host)) {
    Require(asking.host.find("evil") == std::string::npos, "no name is taken for another");
  }
  CheckReply(asking);
  return 0;
}
