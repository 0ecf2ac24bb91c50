// What goes over the line, and what of a request leads where.

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>
#include <string>

#include "apps/serve/access_log.h"
#include "apps/serve/cache.h"
#include "apps/serve/metrics.h"
#include "apps/serve/reply.h"
#include "apps/serve/route.h"
#include "program.h"

namespace vexel::cli {
const Program kProgram{"vexel-serve", "vexel serve", "gif"};
}  // namespace vexel::cli

namespace vexel::serve {
namespace {

std::string Unpacked(std::string_view packed) {
  constexpr int kGzip = 15 + 16;
  z_stream stream{};
  inflateInit2(&stream, kGzip);
  std::string text(1 << 20, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
  stream.avail_in = static_cast<uInt>(packed.size());
  stream.next_out = reinterpret_cast<Bytef*>(text.data());
  stream.avail_out = static_cast<uInt>(text.size());
  EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
  text.resize(stream.total_out);
  inflateEnd(&stream);
  return text;
}

Answer Page(std::string body) {
  Answer answer;
  answer.type = "text/html; charset=utf-8";
  answer.body = std::move(body);
  answer.lasting = Lasting::checked;
  Finish(answer);
  return answer;
}

TEST(Reply, ReadsListsOfCodingsAndTags) {
  const std::pair<const char*, bool> kCodings[] = {{"gzip", true},
                                                   {"", false},
                                                   {"br, GZIP;q=0.5", true},
                                                   {"gzip;q=0", false},
                                                   {"gzip ; q=0.000", false},
                                                   {"*", true},
                                                   {"*;q=0", false},
                                                   {"*, gzip;q=0", false},
                                                   {"gzipped", false},
                                                   {"identity", false},
                                                   {"gzip;q=0.001", true},
                                                   {"gzip;q=", true}};
  for (const auto& [accepted, takes] : kCodings) EXPECT_EQ(TakesGzip(accepted), takes) << accepted;
  const std::pair<const char*, bool> kTags[] = {
      {"\"ab\"", true},   {"W/\"ab\"", true}, {"\"x\", \"ab\"", true}, {"*", true}, {"ab", false},
      {"\"abc\"", false}, {"\"\"", false},    {"\"", false},           {"", false}};
  for (const auto& [known, has] : kTags) EXPECT_EQ(HasTag(known, "ab"), has) << known;
}

TEST(Reply, SendsTheFormThatIsTaken) {
  const Answer page = Page(std::string(5000, 'a') + "z");
  Asking asking;
  asking.method = "GET";
  const Reply plain = ReplyTo(asking, page);
  EXPECT_EQ(plain.body, page.body);
  EXPECT_NE(plain.head.find("Vary: Accept-Encoding\r\n"), std::string::npos);
  EXPECT_NE(plain.head.find("Content-Length: 5001\r\n"), std::string::npos);
  EXPECT_EQ(plain.head.find("Content-Encoding"), std::string::npos);

  asking.accepted = "gzip";
  const Reply packed = ReplyTo(asking, page);
  EXPECT_EQ(Unpacked(packed.body), page.body);
  EXPECT_NE(packed.head.find("Content-Encoding: gzip\r\n"), std::string::npos);
  EXPECT_NE(packed.head.find("Content-Length: " + std::to_string(packed.body.size()) + "\r\n"),
            std::string::npos);

  asking.method = "HEAD";
  EXPECT_EQ(ReplyTo(asking, page).head, packed.head);
  EXPECT_EQ(ReplyTo(asking, page).body, "");
  Answer picture = page;
  picture.type = "image/gif";
  picture.zipped.clear();
  Finish(picture);
  EXPECT_EQ(picture.zipped, "") << "pictures are packed as they are";
}

TEST(Reply, TellsWhatIsStillTrue) {
  const Answer page = Page(std::string(5000, 'a'));
  Asking asking;
  asking.method = "GET";
  for (const std::string accepted : {"", "gzip"}) {
    asking.accepted = accepted;
    asking.known = "";
    const std::string head = ReplyTo(asking, page).head;
    const std::size_t at = head.find("ETag: ") + 6;
    asking.known = head.substr(at, head.find('\r', at) - at);
    const Reply same = ReplyTo(asking, page);
    EXPECT_EQ(same.status, Status::notModified);
    EXPECT_EQ(same.body, "");
    EXPECT_EQ(same.head.find("Content-Length"), std::string::npos);
    EXPECT_NE(same.head.find("ETag: " + asking.known), std::string::npos);
    EXPECT_EQ(ReplyTo(asking, Page(std::string(4999, 'a') + 'b')).status, Status::ok);
  }
  asking.accepted = "";
  EXPECT_EQ(ReplyTo(asking, page).status, Status::ok) << "the packed form is another one";
}

TEST(Reply, KeepsEveryAnswerSafe) {
  for (const Status status : {Status::ok, Status::notFound, Status::busy, Status::notModified}) {
    Answer answer = Page("x");
    answer.status = status;
    answer.fileName = "a\"b\r\nX: y\u00E9\\.gif";
    const std::string head = ReplyTo({.method = "GET", .known = "*"}, answer).head;
    for (const char* line :
         {"X-Content-Type-Options: nosniff\r\n", "default-src 'self'", "frame-ancestors 'none'",
          "Cross-Origin-Resource-Policy: same-origin", "Referrer-Policy: "}) {
      EXPECT_NE(head.find(line), std::string::npos) << line;
    }
    EXPECT_EQ(head.find("\nX: y"), std::string::npos) << head;
    EXPECT_TRUE(head.ends_with("\r\n\r\n"));
    EXPECT_EQ(head.find("\r\n\r\n"), head.size() - 4);
  }
  Answer picture = Page("<svg/>");
  picture.type = "image/svg+xml";
  const std::string head = ReplyTo({.method = "GET"}, picture).head;
  EXPECT_NE(head.find("default-src 'none'; style-src 'unsafe-inline'"), std::string::npos);
  EXPECT_EQ(head.find("script-src"), std::string::npos);
}

TEST(Route, LeadsOnlyWhereThereIsSomething) {
  const struct {
    const char* target;
    Place place;
    Status status = Status::ok;
  } kTargets[] = {
      {"/m/", Place::catalog},
      {"/m", Place::catalog},
      {"/m?x", Place::catalog},
      {"/m/health", Place::health},
      {"/m/metrics?x=1", Place::metrics},
      {"/m/assets/a.css?v=1", Place::asset},
      {"/m/us/12/3?var=2", Place::show},
      {"/m/us/map.gif?%", Place::show},
      {"/m/M%C3%BCnchen", Place::show},
      {"/m/M\u00FCnchen?find=\u00FC", Place::show},
      {"/m/%EF%BF%BD", Place::show},
      {"/us", Place::nowhere, Status::notFound},
      {"/mm/us", Place::nowhere, Status::notFound},
      {"/m/assets", Place::nowhere, Status::notFound},
      {"/m/assets/", Place::nowhere, Status::notFound},
      {"/m/%61ssets?var=2", Place::nowhere, Status::notFound},
      {"/m/metrics/map.gif", Place::nowhere, Status::notFound},
      {"/m/assetsx", Place::show},
      {"/m/us/nothing.gif", Place::nowhere, Status::notFound},
      {"/m/../m/us", Place::nowhere, Status::notFound},
      {"/m/%2e%2E/us", Place::nowhere, Status::notFound},
      {"/m/x%2f..%2fus", Place::nowhere, Status::notFound},
      {"", Place::nowhere, Status::badRequest},
      {"*", Place::nowhere, Status::badRequest},
      {"http://a.example/m/us", Place::nowhere, Status::badRequest},
      {"a.example:443", Place::nowhere, Status::badRequest},
      {"/m/%00", Place::nowhere, Status::badRequest},
      {"/m/us?var=%00", Place::nowhere, Status::badRequest},
      {"/m/us?var=%00&x=%", Place::nowhere, Status::badRequest},
      {"/m/%0d%0aX:y", Place::nowhere, Status::badRequest},
      {"/m/%", Place::nowhere, Status::badRequest},
      {"/m/%zz", Place::nowhere, Status::badRequest},
      {"/m/%FC", Place::nowhere, Status::badRequest},
      {"/m/us?find=%FC", Place::nowhere, Status::badRequest},
      {"/m/\xED\xA0\x80", Place::nowhere, Status::badRequest},
      {"/m/\x01", Place::nowhere, Status::badRequest},
  };
  for (const auto& each : kTargets) {
    const Route route = RouteOf(each.target, "/m");
    EXPECT_EQ(route.place, each.place) << each.target;
    EXPECT_EQ(route.status, each.status) << each.target;
  }
  EXPECT_EQ(RouteOf("/m/assets/a.css?v=1", "/m").asset, "a.css");
}

TEST(Route, CutsDownWhatWouldTakeAllMemory) {
  const auto cut = [](const std::string& query) {
    return RouteOf("/us/map.png?" + query, "").target.show;
  };
  const Show large = cut("size=65535x65535&scale=8");
  EXPECT_EQ(large.request.size, (PageSize{kLongestSide, kLongestSide}));
  EXPECT_LE(large.request.publication.scale * large.request.publication.scale * kLongestSide *
                kLongestSide,
            kMostPixelsPrinted);
  EXPECT_EQ(large.problems.size(), 2U);
  EXPECT_TRUE(cut("size=800x600&scale=3").problems.empty());
}

TEST(Route, KnowsTheNamesOfTheServer) {
  const HostNames names({"Maps.Example.org", "fe80::1"});
  for (const char* host : {"localhost", "LOCALHOST:80", "127.0.0.1:8080", "[::1]", "[::1]:8080",
                           "maps.example.ORG", "maps.example.org.", "[fe80::1]:1"}) {
    EXPECT_TRUE(names.Has(host)) << host;
  }
  for (const char* host : {"", ":80", "evil.example", "localhost.evil.example", "127.0.0.1.nip.io",
                           "[::1", "[::1]evil", "[::1]:80evil", "localhost:80:80", "localhost:evil",
                           "::1", "localhost ", "xlocalhost", "127.0.0.2"}) {
    EXPECT_FALSE(names.Has(host)) << host;
  }
}

TEST(Cache, KeepsWhatWasAskedForLast) {
  constexpr std::size_t kMost = 20'000;
  Cache cache(kMost);
  const auto answer = [](std::size_t size) {
    Answer made;
    made.body.assign(size, 'x');
    return std::make_shared<const Answer>(std::move(made));
  };
  cache.Put("a", answer(1000));
  for (int i = 0; i < 40; ++i) {
    cache.Put("other " + std::to_string(i), answer(1000));
    EXPECT_NE(cache.Find("a"), nullptr) << "it is asked for all the time";
    EXPECT_LE(cache.Bytes(), kMost);
  }
  EXPECT_EQ(cache.Find("other 0"), nullptr);
  EXPECT_NE(cache.Find("other 39"), nullptr);
  const std::size_t count = cache.Count();
  const AnswerPtr newer = answer(1000);
  cache.Put("a", newer);
  EXPECT_EQ(cache.Count(), count);
  EXPECT_EQ(cache.Find("a"), newer);
  cache.Put("large", answer(kMost / 2));
  EXPECT_EQ(cache.Find("large"), nullptr) << "it would push out most of the others";
  Cache none(0);
  none.Put("a", answer(1));
  EXPECT_EQ(none.Count(), 0U);
}

TEST(AccessLog, IsOneLineWhateverWasAsked) {
  LogEntry entry;
  entry.client = "127.0.0.1";
  entry.method = "GET";
  const std::string target = "/a\" 200 \x1B[31m\n\x7F\u202E\x9B";
  entry.target = target;
  for (const LogForm form : {LogForm::text, LogForm::json}) {
    const std::string line = LogLine(entry, form);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    EXPECT_EQ(line.find_first_of("\x1B\x7F\x9B"), std::string::npos);
    EXPECT_EQ(line.find("a\" 200"), std::string::npos) << line;
    EXPECT_EQ(line.find("\u202E"), std::string::npos);
  }
  EXPECT_TRUE(LogLine(entry, LogForm::text).starts_with("1970-01-01T00:00:00Z 127.0.0.1 \"GET /a"));
  const std::string longTarget(100'000, 'a');
  entry.target = longTarget;
  EXPECT_LT(LogLine(entry, LogForm::text).size(), 3000U);
}

TEST(Metrics, CountDurationsInEveryBucketTheyFit) {
  Metrics metrics;
  metrics.CountAnswer("page", Status::ok, std::chrono::microseconds(700));
  metrics.CountAnswer("page", Status::notModified, std::chrono::seconds(60));
  const std::string text = metrics.Text({});
  for (const char* line :
       {"\nvexel_requests_total{kind=\"page\",status=\"2xx\"} 1\n",
        "\nvexel_requests_total{kind=\"page\",status=\"3xx\"} 1\n", "_bucket{le=\"5e-04\"} 0\n",
        "_bucket{le=\"0.001\"} 1\n", "_bucket{le=\"10\"} 1\n", "_bucket{le=\"+Inf\"} 2\n",
        "_count 2\n", "_sum 60.0007\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line << text;
  }
}

}  // namespace
}  // namespace vexel::serve
