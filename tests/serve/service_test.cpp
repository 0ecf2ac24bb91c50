// Data sets, their views, and the answers made of them.

#include <filesystem>
#include <set>

#include "apps/serve/draw.h"
#include "serve/serving.h"

namespace vexel::serve {
namespace {

TEST_F(Serving, AnswersEveryPart) {
  Start();
  const struct {
    const char* part;
    const char* type;
    const char* beginning;
  } kParts[] = {{"", "text/html; charset=utf-8", "<!DOCTYPE html>"},
                {"/map.gif", "image/gif", "GIF8"},
                {"/map.svg", "image/svg+xml", "<"},
                {"/areas.csv", "text/csv; charset=utf-8", ""},
                {"/report.json", "application/json", "{"},
                {"/outlines.json", "application/json", "{"},
                {"/at.json?x=1&y=1", "application/json", "null"}};
  for (const auto& each : kParts) {
    for (const std::string path : {"/land", "/land/1"}) {
      const AnswerPtr answer = Ask(path + each.part);
      EXPECT_EQ(answer->status, Status::ok) << path << each.part << answer->body;
      EXPECT_EQ(answer->type, each.type);
      EXPECT_TRUE(answer->body.starts_with(each.beginning)) << answer->body;
      EXPECT_FALSE(answer->tag.empty());
    }
  }
  EXPECT_EQ(Ask("/land/1/map.gif")->fileName, "land-1.gif");
  EXPECT_NE(Ask("/land/1/map.gif")->tag, Ask("/land/map.gif")->tag);
  const AnswerPtr there = Ask("/land/go?400,300");
  EXPECT_EQ(there->status, Status::seeOther);
  EXPECT_TRUE(there->location.starts_with("/land")) << there->location;
  EXPECT_NE(Ask("/health")->body.find("\"status\": \"ok\""), std::string::npos);
  EXPECT_NE(Ask("/")->body.find("land"), std::string::npos);
}

TEST_F(Serving, RefusesWhatItDoesNotHave) {
  Start();
  for (const char* target : {"/sea", "/land/9", "/land/1/9", "/land/map.jpg", "/assets/none.js",
                             "/land/1/2/3/4/5/6/7/8/9"}) {
    EXPECT_EQ(Ask(target)->status, Status::notFound) << target;
  }
  Asking asking = For("/land");
  asking.host = "evil.example";
  EXPECT_EQ(Ask(asking)->status, Status::forbidden);
  asking.host = "";
  EXPECT_EQ(Ask(asking)->status, Status::badRequest);
  asking = For("/land");
  asking.method = "DELETE";
  const AnswerPtr refused = Ask(asking);
  EXPECT_EQ(refused->status, Status::methodNotAllowed);
  EXPECT_EQ(refused->extra, "Allow: GET, HEAD\r\n");
}

TEST_F(Serving, ShowsTheRestWhereAValueCannotBe) {
  Start();
  View view([&] {
    Request request;
    request.data = folder.Path("land.mdf");
    return request;
  }());
  const auto shown = [&](const std::string& target, std::string* trouble = nullptr) {
    const std::string said =
        ShowOn(view, catalog->Find("land")->BaseRequest(), RouteOf(target, "").target.show.request);
    if (trouble != nullptr) *trouble = said;
    return SubjectOf(view) + ' ' + std::to_string(view.map.GetDrawLevel()) + ' ' +
           std::to_string(view.grouping.groups);
  };
  std::string trouble;
  EXPECT_EQ(shown("/land?var=Deaths&groups=2", &trouble), "Deaths 1 2");
  EXPECT_EQ(trouble, "");
  EXPECT_EQ(shown("/land?var=Dreams&groups=2", &trouble), "Births 1 2");
  EXPECT_NE(trouble.find("Dreams"), std::string::npos) << trouble;
  EXPECT_EQ(shown("/land?var=Deaths&level=7&groups=2&outline=5", &trouble), "Deaths 1 2");
  EXPECT_NE(trouble.find("level"), std::string::npos) << trouble;
  EXPECT_NE(trouble.find("outline"), std::string::npos) << trouble;
  EXPECT_EQ(shown("/land?calc=ratio&var2=None&var=Deaths", &trouble).substr(0, 6), "Deaths");
  EXPECT_THROW(shown("/land/9"), Error);
  EXPECT_EQ(Ask("/land?var=Dreams")->status, Status::ok);
}

TEST_F(Serving, KeepsAnswersByWhatTheySay) {
  Start();
  const AnswerPtr first = Ask("/land?groups=2&var=Deaths");
  EXPECT_EQ(Ask("/land?var=Deaths&groups=2"), first) << "another spelling of the same";
  EXPECT_EQ(Metric("vexel_cache_hits_total"), 1);
  EXPECT_NE(Ask("/land?var=Deaths&groups=2&level=x"), first) << "it has a problem to tell";
  EXPECT_EQ(Ask("/land?var=Deaths&groups=2"), first) << "which is no other page's";
  EXPECT_EQ(Ask("/land/map.gif?sort=value"), Ask("/land/map.gif"));
  EXPECT_NE(Ask("/land/at.json?x=1&y=1"), Ask("/land/at.json?x=1&y=2"));
  EXPECT_NE(Ask("/land/at.json?key=1&way=left"), Ask("/land/at.json?key=1&way=right"));
  EXPECT_EQ(Ask("/land/at.json?x=1&y=1&sort=name"), Ask("/land/at.json?x=1&y=1"));
}

TEST_F(Serving, MakesOneAnswerForAllWhoWait) {
  options.threads = 1;
  options.waiting = 3;
  Start();
  int answered = 0;
  std::set<AnswerPtr> answers;
  const auto take = [&](AnswerPtr answer) {
    ++answered;
    answers.insert(std::move(answer));
  };
  // One thread can have taken one of the three that are under way at most.
  for (int i = 0; i < 50; ++i) service->Ask(For("/land/map.svg"), take);
  for (int i = 0; i < 50; ++i) service->Ask(For("/land/map.gif?groups=2"), take);
  int refused = 0;
  for (int i = 0; i < 50; ++i) {
    service->Ask(For("/land/map.gif?size=" + std::to_string(100 + i) + "x100"),
                 [&](const AnswerPtr& answer) {
                   ++answered;
                   refused += answer->status == Status::busy ? 1 : 0;
                 });
  }
  loop.Run([&] { return answered == 150; });
  EXPECT_EQ(answers.size(), 2U);
  EXPECT_GT(refused, 0);
  EXPECT_EQ(Metric("vexel_jobs_refused_total"), refused);
}

TEST_F(Serving, MakesNoAnswerForNobody) {
  options.threads = 1;
  Start();
  bool isDone = false;
  int left = 0;
  // The first keeps the thread busy until the others have gone.
  service->Ask(For("/land/map.gif?size=4000x4000"), [](const AnswerPtr&) {});
  for (int i = 0; i < 20; ++i) {
    const auto ticket = service->Ask(
        For("/land/map.gif?size=" + std::to_string(200 + i) + "x100"),
        [&](const AnswerPtr& answer) { left += answer->status == Status::busy ? 1 : 0; });
    ASSERT_NE(ticket, nullptr);
    ticket->Leave();
  }
  // One who comes back gets it all the same.
  AnswerPtr wanted;
  service->Ask(For("/land/map.gif?size=205x100"),
               [&](AnswerPtr answer) { wanted = std::move(answer); });
  service->Ask(For("/land/map.gif?size=300x100"), [&](const AnswerPtr&) { isDone = true; });
  loop.Run([&] { return isDone && wanted != nullptr; });
  EXPECT_EQ(wanted->status, Status::ok);
  EXPECT_GT(left, 10);
}

TEST_F(Serving, NoticesChangedFiles) {
  Start();
  const AnswerPtr before = Ask("/land/areas.csv");
  const auto after = [&] {
    std::this_thread::sleep_for(kBetweenLooks);
    return Ask("/land/areas.csv");
  };
  EXPECT_EQ(after(), before);
  folder.Write("land.mdf", test::DataFor("land", "1\tX\t~\t31\t2.5\n2\tX\t~\t77\t4.0\n"));
  EXPECT_NE(after()->body.find("77"), std::string::npos);

  std::string other(test::kLandMap);
  other.replace(other.find("North"), 5, "Norse");
  folder.Write("land.map", other);
  const AnswerPtr renamed = after();
  EXPECT_NE(renamed->body.find("Norse"), std::string::npos) << renamed->body;

  // What cannot be read leaves the last that could, on every thread, and says so.
  folder.Write("land.map", "[Map]\nbroken");
  EXPECT_EQ(after()->body, renamed->body);
  int answered = 0;
  for (int i = 0; i < 20; ++i) {
    service->Ask(For("/land?groups=" + std::to_string(i % 7 + 1) +
                     "&size=" + std::to_string(300 + i) + "x200"),
                 [&](const AnswerPtr& answer) {
                   ++answered;
                   EXPECT_EQ(answer->status, Status::ok);
                   EXPECT_NE(answer->body.find("cannot be read"), std::string::npos);
                 });
  }
  loop.Run([&] { return answered == 20; });
  EXPECT_GE(Metric("vexel_load_failures_total"), 1);
  std::filesystem::remove(folder.Path("land.mdf"));
  EXPECT_EQ(after()->body, renamed->body);
  folder.Write("land.map", test::kLandMap);
  folder.Write("land.mdf", test::DataFor("land", test::kLandRows));
  EXPECT_NE(after()->body.find("North"), std::string::npos);
  EXPECT_EQ(Ask("/land")->body.find("cannot be read"), std::string::npos);
}

TEST_F(Serving, NamesSetsApart) {
  folder.Write("health.mdf", test::DataFor("land", test::kLandRows));
  folder.Write("bad.mdf", "nothing");
  folder.Write("no.txt", "nothing");
  std::filesystem::create_directory(folder.Path("more"));
  folder.Write("more/land.mdf", test::DataFor("../land", test::kLandRows));
  folder.Write("more/a b.mdf", test::DataFor("../land", test::kLandRows));
  options.sources = {folder.Path(""), folder.Path("more"), folder.Path("more/land.mdf")};
  catalog.emplace(options.sources);
  catalog->Load();
  std::string names;
  for (const DataSet& set : catalog->Describe()) {
    names += set.set + (set.trouble.empty() ? ", " : " (broken), ");
  }
  EXPECT_EQ(names, "bad (broken), health-2, land, a b, land-2, land-3, ");
  service.emplace(options, *catalog, Printer(std::nullopt, {}), loop.Post());
  EXPECT_EQ(Ask("/a%20b")->status, Status::ok);
  EXPECT_EQ(Ask("/bad")->status, Status::failed);
  EXPECT_EQ(Ask("/bad")->tag, "") << "it may be mended at any moment";

  folder.Write("later.mdf", test::DataFor("land", test::kLandRows));
  std::this_thread::sleep_for(kBetweenLooks);
  EXPECT_EQ(Ask("/later")->status, Status::ok);
}

TEST_F(Serving, BeginsWithTheFirstLevelThatHasOutlines) {
  std::string names(test::kLandMap);
  for (std::size_t at = names.find("[GeoGroup]"); at != std::string::npos;
       at = names.find("[GeoGroup]", at + 1)) {
    const std::size_t polygon = names.find("[Polygon]", at);
    names.erase(polygon, names.find("[Geo", polygon) - polygon);
  }
  folder.Write("land.map", names);
  Start();
  EXPECT_NE(Ask("/land/areas.csv")->body.find("Bare"), std::string::npos);
}

TEST_F(Serving, HasNothingToServe) {
  const auto refusal = [](const std::vector<std::string>& sources) {
    return test::Refusal([&] { Catalog(sources).Load(); });
  };
  std::filesystem::create_directory(folder.Path("empty"));
  EXPECT_NE(refusal({folder.Path("empty")}).find("no data file"), std::string::npos);
  EXPECT_NE(refusal({folder.Path("none.mdf")}).find("none.mdf"), std::string::npos);
  folder.Write("land.map", "");
  EXPECT_NE(refusal({folder.Path("land.mdf")}).find("land.map"), std::string::npos);
}

// A program that takes the place of the one that prints.
class Printing : public Serving {
 protected:
  AnswerPtr Print(const std::string& script, std::chrono::milliseconds patience) {
    folder.Write("print", "#!/bin/sh\n" + script);
    std::filesystem::permissions(folder.Path("print"), std::filesystem::perms::owner_all);
    service.reset();
    Start(Printer(folder.Path("print"), patience));
    return Ask("/land/1/map.png?var=Deaths&title=%22%27%24(x)");
  }
};

TEST_F(Printing, HandsTheRequestOn) {
  const std::chrono::seconds kLong{20};
  // More than a pipe holds, both ways.
  const AnswerPtr answer = Print("echo \"$@\"; cat; yes | head -c 300000", kLong);
  EXPECT_EQ(answer->status, Status::ok) << answer->body;
  EXPECT_EQ(answer->type, "image/png");
  EXPECT_TRUE(answer->body.starts_with("--view - --output - --format png --quiet\n{"));
  EXPECT_NE(answer->body.find("\"title\": \"\\\"'$(x)\""), std::string::npos);
  EXPECT_GT(answer->body.size(), 300'000U);

  const AnswerPtr failed = Print("echo 'vexel-print: no <ink>' >&2; exit 1", kLong);
  EXPECT_EQ(failed->status, Status::failed);
  EXPECT_NE(failed->body.find("no &lt;ink&gt;"), std::string::npos) << failed->body;
  EXPECT_EQ(Print("kill -9 $$", kLong)->status, Status::failed);
  EXPECT_EQ(Print("exit 0", kLong)->status, Status::failed) << "nothing is no picture";
  // It has no descriptors but its streams.
  EXPECT_EQ(Print("ls /proc/self/fd | head -c 5 | tr '\\n' ' '", kLong)->body, "0 1 2");
}

TEST_F(Printing, WaitsOnlySoLong) {
  const auto begin = std::chrono::steady_clock::now();
  for (const char* script : {"exec sleep 60", "exec sleep 60 >&- 2>&-"}) {
    EXPECT_EQ(Print(script, std::chrono::milliseconds(300))->status, Status::failed);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
  service.reset();
  Start();
  EXPECT_EQ(Ask("/land/map.pdf")->status, Status::notInstalled);
}

}  // namespace
}  // namespace vexel::serve
