#include "apps/serve/draw.h"

#include <exception>
#include <optional>
#include <utility>

#include "kit/publish/compose.h"
#include "kit/publish/svg.h"
#include "kit/report/csv.h"
#include "kit/report/report.h"
#include "kit/request/error.h"
#include "kit/request/query.h"
#include "kit/request/values.h"
#include "kit/view/area_finder.h"
#include "kit/view/listener.h"
#include "kit/view/page.h"

namespace vexel::serve {

namespace {

constexpr std::string_view kHtml = "text/html; charset=utf-8";
constexpr std::string_view kJson = "application/json";

// The query without what an error is about: the parameter with which it begins, "--var: …", or else
// the level; without anything when neither is there.
std::string WithoutCause(const std::string& query, std::string_view error) {
  std::string name = "level";
  if (error.starts_with("--")) name = error.substr(2, error.find_first_of(": ") - 2);
  std::string rest;
  bool isFound = false;
  for (const std::string_view part : Split(query, '&')) {
    if (part.starts_with(name + '=')) {
      isFound = true;
    } else {
      rest.append(rest.empty() ? "" : "&").append(part);
    }
  }
  return isFound ? rest : "";
}

Request RequestOf(const Request& base, const std::string& query,
                  const std::optional<CAreaStruct>& zoom) {
  Request request;
  request.data = base.data;
  ReadQuery(request, query);
  request.zoom = zoom;
  if (!request.level && !zoom) request.level = base.level;
  return request;
}

std::string ReportOf(View& view) {
  GifPage page(view, "");
  return ReportText(view, page);
}

AreaFinder& FinderOf(KeptView& kept) {
  if (kept.finder == nullptr) kept.finder = std::make_unique<AreaFinder>(*kept.view);
  return *kept.finder;
}

// One part of the page of a view that shows what is asked for.
class Drawer {
 public:
  Drawer(const Site& site, LoadedSet& set, const Target& target, const Printer& printer)
      : site_(site), set_(set), target_(target), printer_(printer) {
    answer_.kind = "page";
    answer_.lasting = Lasting::checked;
  }

  Answer Take(KeptView& kept, const std::string& trouble) && {
    View& view = *kept.view;
    switch (target_.part) {
      case Part::page:
        kept.finder.reset();
        Set("page", kHtml, MapPage(site_, view, target_.show, trouble));
        break;
      case Part::gif:
        Set("picture", "image/gif", GifText(view));
        NameFile(".gif");
        break;
      case Part::svg:
        Set("picture", "image/svg+xml", SvgText(Compose(view)));
        NameFile(".svg");
        break;
      case Part::png:
        Set("print", "image/png", printer_.Print(view.request, "png"));
        NameFile(".png");
        break;
      case Part::pdf:
        Set("print", "application/pdf", printer_.Print(view.request, "pdf"));
        NameFile(".pdf");
        break;
      case Part::csv:
        Set("data", "text/csv; charset=utf-8", CsvText(view));
        NameFile(".csv");
        answer_.isDownload = true;
        break;
      case Part::report:
        Set("data", kJson, ReportOf(view));
        NameFile(".json");
        break;
      case Part::outlines:
        Set("data", kJson, OutlinesJson(view, target_.show));
        break;
      case Part::at:
        Set("at", kJson, AtJson(view, FinderOf(kept), target_));
        break;
      case Part::go:
        answer_.kind = "at";
        answer_.status = Status::seeOther;
        answer_.location = GoAddress(site_, view, FinderOf(kept), target_);
        answer_.type = kHtml;
        break;
    }
    return std::move(answer_);
  }

 private:
  void Set(std::string_view kind, std::string_view type, std::string body) {
    answer_.kind = kind;
    answer_.type = type;
    answer_.body = std::move(body);
  }
  void NameFile(std::string_view extension) {
    answer_.fileName = set_.Name();
    if (target_.show.request.zoom) {
      answer_.fileName += '-' + KeyText(*target_.show.request.zoom, "-");
    }
    answer_.fileName += extension;
  }

  const Site& site_;
  LoadedSet& set_;
  const Target& target_;
  const Printer& printer_;
  Answer answer_;
};

Answer DrawOn(const Site& site, LoadedSet& set, const Target& target, const Printer& printer) {
  const Request& wanted = target.show.request;
  std::string words = QueryText(wanted);
  LoadedSet::Loan loan = set.Borrow(words);
  KeptView& kept = loan.Kept();
  View& view = *kept.view;
  const CurrentHost current(view.listener);
  std::string trouble;
  // Only an area is looked up without having the page shown anew: all else may leave notes behind.
  const bool isShown = kept.finder != nullptr && kept.shown == words &&
                       (target.part == Part::at || target.part == Part::go);
  if (!isShown) {
    kept.finder.reset();
    kept.shown.clear();
    trouble = ShowOn(view, set.BaseRequest(), wanted);
    kept.shown = std::move(words);
  }
  if (!loan.Trouble().empty()) {
    trouble += (trouble.empty() ? "" : "; ") +
               ("the files have changed and cannot be read, so this is what they held before: " +
                loan.Trouble());
  }
  return Drawer(site, set, target, printer).Take(kept, trouble);
}

}  // namespace

std::string ShowOn(View& view, const Request& base, const Request& wanted) {
  constexpr int kMostTries = 8;
  std::string trouble;
  Request said = wanted;
  said.zoom.reset();
  std::string query = QueryText(said);
  for (int i = 0; i < kMostTries; ++i) {
    try {
      view.Show(RequestOf(base, query, wanted.zoom));
      return trouble;
    } catch (const Error& error) {
      const std::string_view text = error.what();
      if (text.starts_with("--zoom")) throw;
      trouble.append(trouble.empty() ? "" : "; ").append(text.substr(text.find_first_not_of('-')));
      // The rest of it holds.
      query = WithoutCause(query, text);
    }
  }
  view.Show(base);
  return trouble;
}

AnswerPtr ErrorAnswer(const Site& site, Status status, std::string_view text) {
  Answer answer;
  answer.status = status;
  answer.type = kHtml;
  answer.body = ErrorPage(site, static_cast<int>(status), text);
  return std::make_shared<const Answer>(std::move(answer));
}

AnswerPtr Draw(const Site& site, LoadedSet& set, const Target& target, const Printer& printer) {
  try {
    Answer answer = DrawOn(site, set, target, printer);
    if (answer.status == Status::ok) Finish(answer);
    return std::make_shared<const Answer>(std::move(answer));
  } catch (const NotInstalled& error) {
    return ErrorAnswer(site, Status::notInstalled, error.what());
  } catch (const Error& error) {
    const bool isUnknown = std::string_view(error.what()).starts_with("--zoom");
    return ErrorAnswer(site, isUnknown ? Status::notFound : Status::failed,
                       isUnknown ? "The map has no such area." : error.what());
  } catch (const std::bad_alloc&) {
    return ErrorAnswer(site, Status::busy, "There is not memory enough for this just now.");
  } catch (const std::exception& error) {
    return ErrorAnswer(site, Status::failed, error.what());
  }
}

}  // namespace vexel::serve
