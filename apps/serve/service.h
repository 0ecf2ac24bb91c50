// From a request to its answer, whatever brings the one and takes the other away.

#ifndef VEXEL_APPS_SERVE_SERVICE_H_
#define VEXEL_APPS_SERVE_SERVICE_H_

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "apps/serve/answer.h"
#include "apps/serve/cache.h"
#include "apps/serve/catalog.h"
#include "apps/serve/metrics.h"
#include "apps/serve/options.h"
#include "apps/serve/pages/pages.h"
#include "apps/serve/printer.h"
#include "apps/serve/reply.h"
#include "apps/serve/route.h"
#include "apps/serve/workers.h"

namespace vexel::serve {

// Everything but the constructor is for one thread.
class Service {
 public:
  using Done = std::function<void(AnswerPtr)>;

  // An answer that is being made for those who asked for it.
  class Ticket {
   public:
    // Says that one of them no longer wants it. What nobody wants is not made while others wait.
    void Leave() { --wanted_; }

   private:
    friend Service;

    std::string key_;
    LoadedSet* set_ = nullptr;
    Target target_;
    std::atomic<int> wanted_ = 1;
    std::vector<Done> waiting_;
  };
  using TicketPtr = std::shared_ptr<Ticket>;

  // Runs what it gets on the thread of the service, soon; may be called on any thread, and must
  // work until the service is gone.
  using Post = std::function<void(std::function<void()>)>;

  // The catalog stays the caller's and must outlive it.
  Service(const Options& options, Catalog& catalog, Printer printer, Post post);

  // Calls `done` with the answer: before it returns, and then there is no ticket, or later.
  TicketPtr Ask(const Asking& asking, Done done);

  // An answer with a page that says what is wrong with a request.
  AnswerPtr Refuse(Status status) const;

  Metrics& GetMetrics() { return metrics_; }
  bool IsIdle() const { return workers_.AreIdle(); }
  void SetConnections(std::size_t connections) { connections_ = connections; }

 private:
  AnswerPtr AtOnce(const Asking& asking, const Route& route);
  AnswerPtr AssetNamed(std::string_view name) const;
  AnswerPtr CatalogAnswer();
  AnswerPtr HealthAnswer() const;
  AnswerPtr MetricsAnswer() const;
  TicketPtr AskForPart(Route route, Done done);
  bool Start(const TicketPtr& ticket);
  void Take(const TicketPtr& ticket, const AnswerPtr& answer);

  Site site_;
  Catalog& catalog_;
  Printer printer_;
  Post post_;
  HostNames hosts_;
  Cache cache_;
  Metrics metrics_;
  std::size_t connections_ = 0;
  std::vector<std::pair<std::string_view, AnswerPtr>> assets_;
  std::unordered_map<std::string, TicketPtr> underWay_;
  Workers workers_;  // the last: its threads use all the rest
};

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_SERVICE_H_
