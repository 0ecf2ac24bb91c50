// A folder with a small data set, and a service that answers from it without a network.

#ifndef VEXEL_TESTS_SERVE_SERVING_H_
#define VEXEL_TESTS_SERVE_SERVING_H_

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "apps/serve/service.h"
#include "cli/cli_fixture.h"
#include "support/refusal.h"

namespace vexel::serve {

inline constexpr std::chrono::milliseconds kBetweenLooks{1100};

// What is posted to the thread of the tests.
class Loop {
 public:
  Service::Post Post() {
    return [this](std::function<void()> act) {
      {
        const std::lock_guard lock(mutex_);
        acts_.push_back(std::move(act));
      }
      changed_.notify_one();
    };
  }

  // Does what is posted until there is nothing left to wait for.
  void Run(const std::function<bool()>& isDone) {
    while (!isDone()) {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return !acts_.empty(); });
      const std::function<void()> act = std::move(acts_.front());
      acts_.pop_front();
      lock.unlock();
      act();
    }
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> acts_;
};

class Serving : public testing::Test {
 protected:
  Serving() {
    folder.Write("land.map", test::kLandMap);
    folder.Write("land.mdf", test::DataFor("land", test::kLandRows));
  }
  ~Serving() override { service.reset(); }

  void Start(Printer printer = Printer(std::nullopt, {})) {
    options.sources = {folder.Path("")};
    catalog.emplace(options.sources);
    catalog->Load();
    service.emplace(options, *catalog, std::move(printer), loop.Post());
  }

  static Asking For(const std::string& target) {
    Asking asking;
    asking.method = "GET";
    asking.target = target;
    asking.host = "127.0.0.1:80";
    return asking;
  }

  AnswerPtr Ask(const Asking& asking) {
    AnswerPtr answer;
    service->Ask(asking, [&](AnswerPtr made) { answer = std::move(made); });
    loop.Run([&] { return answer != nullptr; });
    return answer;
  }
  AnswerPtr Ask(const std::string& target) { return Ask(For(target)); }

  // A line of the metrics, which must be there.
  int Metric(const std::string& name) {
    const std::string text = Ask("/metrics")->body;
    const std::size_t at = text.find('\n' + name + ' ');
    EXPECT_NE(at, std::string::npos) << name;
    return at == std::string::npos ? -1 : std::stoi(text.substr(at + name.size() + 2));
  }

  test::TempDir folder;
  Options options;
  Loop loop;
  std::optional<Catalog> catalog;
  std::optional<Service> service;
};

}  // namespace vexel::serve

#endif  // VEXEL_TESTS_SERVE_SERVING_H_
