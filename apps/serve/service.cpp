#include "apps/serve/service.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "apps/serve/draw.h"
#include "kit/request/json_text.h"
#include "kit/request/values.h"

namespace vexel::serve {

namespace {

std::vector<std::string> HostsOf(const Options& options) {
  std::vector<std::string> hosts = options.serverNames;
  hosts.push_back(options.host);
  return hosts;
}

int ThreadsOf(const Options& options) {
  if (options.threads > 0) return options.threads;
  return std::max(static_cast<int>(std::thread::hardware_concurrency()), 1);
}

std::string_view SentenceFor(Status status) {
  switch (status) {
    case Status::badRequest:
      return "The address is not spelled as addresses are.";
    case Status::forbidden:
      return "This server does not go by that name; --server-name gives it one.";
    case Status::notFound:
      return "There is nothing at this address.";
    case Status::methodNotAllowed:
      return "Here is only something to look at: GET and HEAD.";
    case Status::bodyTooLarge:
      return "Nothing can be sent to this server.";
    case Status::targetTooLong:
      return "The address is too long.";
    case Status::headTooLarge:
      return "The head of the request is too long.";
    case Status::busy:
      return "Too much is being asked for just now. Please try again in a moment.";
    case Status::wrongVersion:
      return "This server speaks HTTP/1.1.";
    default:
      return "Something went wrong.";
  }
}

std::string_view ExtraFor(Status status) {
  if (status == Status::methodNotAllowed) return "Allow: GET, HEAD\r\n";
  if (status == Status::busy) return "Retry-After: 2\r\n";
  return "";
}

// Equal for requests that have the same answer, as long as the files are the same.
std::string KeyOf(const Target& target) {
  // What `go` leads to has all of the state that it came from.
  const bool isGo = target.part == Part::go;
  std::string key = AddressOf(target.show, isGo ? Part::page : target.part);
  if (isGo) key += " go";
  if (target.pixel) {
    key += ' ' + std::to_string(target.pixel->x) + ' ' + std::to_string(target.pixel->y);
  }
  if (target.key) key += " key " + KeyText(*target.key);
  if (target.way) key += " way " + std::to_string(static_cast<int>(*target.way));
  // Pages tell what was wrong with their address.
  for (const std::string& problem : target.show.problems) key += '\n' + problem;
  return key;
}

AnswerPtr Text(std::string_view kind, std::string type, std::string body) {
  Answer answer;
  answer.kind = kind;
  answer.type = std::move(type);
  answer.body = std::move(body);
  return std::make_shared<const Answer>(std::move(answer));
}

}  // namespace

Service::Service(const Options& options, Catalog& catalog, Printer printer, Post post)
    : site_{options.base, printer.IsInstalled()},
      catalog_(catalog),
      printer_(std::move(printer)),
      post_(std::move(post)),
      hosts_(HostsOf(options)),
      cache_(options.cacheBytes),
      workers_(ThreadsOf(options), options.waiting) {
  assets_.reserve(Assets().size());
  for (const Asset& asset : Assets()) {
    Answer answer;
    answer.kind = "asset";
    answer.type = asset.mediaType;
    answer.body = asset.text;
    answer.lasting = Lasting::forever;
    Finish(answer);
    assets_.emplace_back(asset.name, std::make_shared<const Answer>(std::move(answer)));
  }
}

AnswerPtr Service::Refuse(Status status) const {
  Answer answer = *ErrorAnswer(site_, status, SentenceFor(status));
  answer.extra = ExtraFor(status);
  return std::make_shared<const Answer>(std::move(answer));
}

Service::TicketPtr Service::Ask(const Asking& asking, Done done) {
  Route route = RouteOf(asking.target, site_.base);
  if (AnswerPtr answer = AtOnce(asking, route)) {
    done(std::move(answer));
    return nullptr;
  }
  return AskForPart(std::move(route), std::move(done));
}

// Null when it takes a data set.
AnswerPtr Service::AtOnce(const Asking& asking, const Route& route) {
  if (asking.host.empty()) return Refuse(Status::badRequest);
  if (!hosts_.Has(asking.host)) return Refuse(Status::forbidden);
  if (asking.method != "GET" && asking.method != "HEAD") return Refuse(Status::methodNotAllowed);
  switch (route.place) {
    case Place::catalog:
      return CatalogAnswer();
    case Place::asset:
      return AssetNamed(route.asset);
    case Place::health:
      return HealthAnswer();
    case Place::metrics:
      return MetricsAnswer();
    case Place::show:
      return nullptr;
    default:
      return Refuse(route.status);
  }
}

AnswerPtr Service::AssetNamed(std::string_view name) const {
  const auto found = std::find_if(assets_.begin(), assets_.end(),
                                  [=](const auto& asset) { return asset.first == name; });
  return found == assets_.end() ? Refuse(Status::notFound) : found->second;
}

AnswerPtr Service::CatalogAnswer() {
  catalog_.LookForMore();
  for (const auto& set : catalog_.Sets()) set->Version();
  Answer answer;
  answer.kind = "page";
  answer.type = "text/html; charset=utf-8";
  answer.body = CatalogPage(site_, catalog_.Describe());
  answer.lasting = Lasting::checked;
  Finish(answer);
  return std::make_shared<const Answer>(std::move(answer));
}

AnswerPtr Service::HealthAnswer() const {
  JsonWriter json;
  json.BeginObject();
  json.Member("status", "ok");
  json.Member("sets", catalog_.Sets().size());
  json.EndObject();
  return Text("health", "application/json", std::move(json).Take() + '\n');
}

AnswerPtr Service::MetricsAnswer() const {
  Gauges gauges;
  gauges.cacheBytes = cache_.Bytes();
  gauges.cacheAnswers = cache_.Count();
  gauges.connections = connections_;
  gauges.jobsWaiting = workers_.Waiting();
  for (const auto& set : catalog_.Sets()) {
    gauges.sets += set->Describe().variables > 0 ? 1U : 0U;
    gauges.failures += set->Failures();
  }
  return Text("metrics", "text/plain; version=0.0.4; charset=utf-8", metrics_.Text(gauges));
}

Service::TicketPtr Service::AskForPart(Route route, Done done) {
  const std::string& name = route.target.show.set;
  LoadedSet* set = catalog_.Find(name);
  if (set == nullptr && catalog_.LookForMore()) set = catalog_.Find(name);
  if (set == nullptr) {
    done(Refuse(Status::notFound));
    return nullptr;
  }
  std::string key = std::to_string(set->Version()) + KeyOf(route.target);
  if (AnswerPtr answer = cache_.Find(key)) {
    ++metrics_.hits;
    done(std::move(answer));
    return nullptr;
  }
  if (const auto found = underWay_.find(key); found != underWay_.end()) {
    ++metrics_.hits;
    ++found->second->wanted_;
    found->second->waiting_.push_back(std::move(done));
    return found->second;
  }
  ++metrics_.misses;
  auto ticket = std::make_shared<Ticket>();
  ticket->key_ = std::move(key);
  ticket->set_ = set;
  ticket->target_ = std::move(route.target);
  if (!Start(ticket)) {
    done(Refuse(Status::busy));
    return nullptr;
  }
  ticket->waiting_.push_back(std::move(done));
  underWay_.emplace(ticket->key_, ticket);
  return ticket;
}

bool Service::Start(const TicketPtr& ticket) {
  const bool isTaken = workers_.Give([this, ticket] {
    // A ticket that nobody wants goes back without an answer when others wait. Who has only closed
    // his half of the connection looks as if he had gone.
    AnswerPtr answer;
    const bool isWanted = ticket->wanted_ > 0 || workers_.Waiting() == 0;
    if (isWanted) answer = Draw(site_, *ticket->set_, ticket->target_, printer_);
    post_([this, ticket, answer = std::move(answer)] { Take(ticket, answer); });
  });
  if (!isTaken) ++metrics_.refusedJobs;
  return isTaken;
}

void Service::Take(const TicketPtr& ticket, const AnswerPtr& answer) {
  // Somebody else may have begun to want it while it was going back.
  const bool isWantedAgain = answer == nullptr && ticket->wanted_ > 0;
  if (isWantedAgain && Start(ticket)) return;
  underWay_.erase(ticket->key_);
  if (answer != nullptr && !answer->tag.empty()) cache_.Put(ticket->key_, answer);
  const AnswerPtr given = answer != nullptr ? answer : Refuse(Status::busy);
  for (const Done& done : std::exchange(ticket->waiting_, {})) done(given);
}

}  // namespace vexel::serve
