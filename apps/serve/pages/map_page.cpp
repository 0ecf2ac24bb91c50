// The page of a data set.

#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "apps/serve/pages/form.h"
#include "apps/serve/pages/frame.h"
#include "apps/serve/pages/viewer_links.h"
#include "kit/files/files.h"
#include "kit/report/summary.h"
#include "kit/request/arguments.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/markup.h"
#include "kit/request/values.h"
#include "kit/site/area_table.h"
#include "kit/site/compared.h"
#include "kit/site/histogram.h"
#include "kit/site/pieces.h"

namespace vexel::serve {

namespace {

// One of the pictures with what belongs beside it.
struct Panel {
  std::string subject;  // markup, as are the next
  std::string alternative;
  std::string picture;
  std::string legend;
  std::string histogram;
};

std::string Plain(std::string_view text) { return MarkupText(XmlText(text)); }

// Beside the picture to compare: what can be chosen is chosen beside the first.
class NoLinks : public Links {
 public:
  std::string ToPlace(const CMapOb* /*area*/) const override { return {}; }
  std::string ToRow(const CMapOb& /*area*/) const override { return {}; }
  std::string ToSorted(std::string_view /*sort*/, bool /*down*/) const override { return {}; }
  std::string ToRows(int /*page*/) const override { return {}; }
  std::string ToSlot(std::optional<int> /*slot*/) const override { return {}; }
};

class PageWriter {
 public:
  PageWriter(const Site& site, View& view, const Show& show, const std::string& trouble)
      : site_(site), view_(view), show_(show), links_(site, view, show_), notes_(show.problems) {
    if (!trouble.empty()) {
      notes_.push_back(trouble);
      show_.request = view.request;
      show_.request.data.clear();
      show_.request.map.clear();
    }
    FindCompared();
    notes_.insert(notes_.end(), view.notes.begin(), view.notes.end());
  }

  std::string Make() {
    Frame frame;
    frame.title = Title();
    frame.canonical = links_.To(Part::page);
    frame.hasScript = true;
    frame.skip = "areas";
    frame.skipText = "Skip the map and go to the table";
    const std::string table = Areas();
    const std::string files = Files();
    frame.main = Head() + Notes() + FormMarkup(view_, show_, Action(), Column()) +
                 "<div class=\"body\">\n" + Pictures() + table + files + "</div>\n" + Help();
    return Framed(site_, frame);
  }

 private:
  void FindCompared() {
    if (show_.with.empty()) return;
    try {
      compared_.emplace(view_, show_.with);
    } catch (const Error& error) {
      notes_.emplace_back(error.what());
      show_.with.clear();
    }
  }

  std::optional<int> Column() const {
    return compared_ ? std::optional(compared_->Column()) : std::nullopt;
  }

  std::string Title() {
    const auto& own = show_.request.publication.title;
    return own && !own->empty() ? *own : std::string(view_.map.GenerateTitle().View());
  }

  std::string Head() {
    return "<div id=\"head\" data-part>\n<nav aria-label=\"Place\"><ol class=\"path\">" +
           PathMarkup(view_, links_) + "</ol></nav>\n<h1><bdi>" + Plain(Title()) +
           "</bdi></h1>\n</div>\n";
  }

  std::string Notes() const {
    return "<div id=\"notes\" data-part>" + NotesMarkup(notes_) + "</div>\n";
  }

  // Where the form leads; a query of its own takes the place of any here.
  std::string Action() const {
    Show place;
    place.set = show_.set;
    place.request.zoom = show_.request.zoom;
    return site_.base + AddressOf(place);
  }

  Part PicturePart() const { return HasVectors(view_) ? Part::svg : Part::gif; }

  Panel PanelOf(const Show& show, const Links& links) {
    Panel panel;
    panel.subject = Plain(SubjectOf(view_));
    panel.alternative = MarkupText(AlternativeText(view_));
    Show picture = show;
    if (HasVectors(view_)) picture.request = BareRequest(show.request);
    panel.picture = MarkupText(site_.base + AddressOf(picture, PicturePart()));
    panel.legend = LegendMarkup(view_, links, show_.in);
    panel.histogram = HistogramMarkup(view_);
    return panel;
  }

  // What the variable to compare looks like; the view shows what it did afterwards.
  std::optional<Panel> ComparedPanel() {
    if (!compared_) return std::nullopt;
    const Request before = view_.request;
    Show other = show_;
    other.request.variable = std::to_string(compared_->Column() + 1);
    other.request.secondVariable.clear();
    other.request.calculation.reset();
    Request request = before;
    request.variable = other.request.variable;
    request.secondVariable.clear();
    request.calculation.reset();
    std::optional<Panel> panel;
    try {
      view_.Show(std::move(request));
      panel = PanelOf(other, NoLinks());
    } catch (const Error& error) {
      panel.emplace();
      panel->subject = MarkupText(compared_->Name());
      panel->legend = "<p>" + Plain(error.what()) + "</p>\n";
    }
    view_.Show(before);
    return panel;
  }

  std::string Image(const Panel& panel, std::string_view attributes) const {
    const auto [width, height] = view_.request.size;
    std::string image = "<img src=\"" + panel.picture + "\" width=\"" + std::to_string(width) +
                        "\" height=\"" + std::to_string(height) + "\" alt=\"" + panel.alternative +
                        "\"";
    return image.append(attributes).append(">");
  }

  // What the script needs to know of the map.
  std::string MapAttributes() const {
    const auto attribute = [](std::string_view name, const std::string& value) {
      std::string text = " data-";
      return text.append(name).append("=\"").append(MarkupText(value)).append("\"");
    };
    return attribute("at", links_.To(Part::at)) + attribute("place", links_.PlacePattern()) +
           attribute("row", links_.RowPattern()) + attribute("up", links_.ToParent()) +
           attribute("first", KeyText(view_.areas.front()->GetArea())) +
           attribute("kept", show_.area ? KeyText(*show_.area) : "") +
           attribute("compared", compared_ ? compared_->Name() : "") +
           (HasVectors(view_) ? attribute("outlines", links_.To(Part::outlines)) : "");
  }

  std::string Pictures() {
    const Panel own = PanelOf(show_, links_);
    const std::optional<Panel> other = ComparedPanel();
    const std::string kind = HasVectors(view_) ? "vectors" : "pixels";
    std::string markup =
        std::string("<div id=\"view\" data-part class=\"view") + (other ? " two" : "") + "\">\n" +
        "<section class=\"panel\">\n" + (other ? "<h2>" + own.subject + "</h2>\n" : "") +
        "<div class=\"sheet " + kind + "\" id=\"map\"" + MapAttributes() + "><a id=\"go\" href=\"" +
        MarkupText(links_.To(Part::go)) + "\">" + Image(own, " ismap id=\"picture\"") +
        "</a></div>\n" + Side(own) + "</section>\n";
    if (other) {
      markup += "<section class=\"panel other\">\n<h2>" + other->subject + "</h2>\n";
      if (!other->picture.empty()) {
        markup += "<div class=\"sheet " + kind + "\">" + Image(*other, "") + "</div>\n";
      }
      markup += Side(*other) + "</section>\n";
    }
    return markup + "</div>\n";
  }

  static std::string Side(const Panel& panel) {
    return "<div class=\"side\">\n" + panel.legend + panel.histogram + "</div>\n";
  }

  std::string Areas() {
    TableChoice choice;
    choice.sort = show_.sort;
    choice.down = show_.down;
    choice.find = show_.find;
    choice.in = show_.in;
    choice.page = show_.rows;
    CMapOb* kept = nullptr;
    if (show_.area) view_.map.Find(*show_.area, kept);
    choice.kept = kept;
    const TableRows rows = ChooseRows(view_, choice);
    return "<section id=\"areas\" data-part tabindex=\"-1\" aria-labelledby=\"areas-title\">\n"
           "<h2 id=\"areas-title\">" +
           Counted(view_.areas.size(), "area") +
           "</h2>\n<div class=\"tools\"><label for=\"find\">Find a name</label><input "
           "type=\"search\""
           " id=\"find\" name=\"find\" form=\"choices\" autocomplete=\"off\" spellcheck=\"false\""
           " value=\"" +
           MarkupText(show_.find) + "\">" + Filter() + "</div>\n" +
           TableMarkup(view_, choice, rows, links_, compared_ ? &*compared_ : nullptr) +
           MissingMarkup(view_, links_) + "</section>\n";
  }

  // By what the table is cut down, and how to get all of it.
  std::string Filter() const {
    if (!show_.in && show_.find.empty()) return {};
    Show all = show_;
    all.in.reset();
    all.find.clear();
    all.rows = 1;
    all.area.reset();
    std::string text = "<span>";
    if (show_.in && *show_.in <= CLegend::kNoDataSlot) {
      text += "only " + SwatchMarkup(view_, *show_.in) +
              Plain(view_.legend.GetRow(*show_.in).text) + ' ';
    }
    return text + LinkMarkup(site_.base + AddressOf(all), "Show all", " id=\"show-all\"") +
           "</span>";
  }

  std::string Files() {
    struct File {
      Part part;
      std::string_view name;
      bool isPrinted;
    };
    constexpr std::array kFiles{File{Part::svg, "SVG", false}, File{Part::png, "PNG", true},
                                File{Part::pdf, "PDF", true},  File{Part::gif, "GIF", false},
                                File{Part::csv, "CSV", false}, File{Part::report, "JSON", false}};
    std::string list;
    for (const File& file : kFiles) {
      if (file.isPrinted && !site_.hasPrinter) continue;
      list += "<li>" + LinkMarkup(links_.To(file.part), file.name, " download") + "</li>";
    }
    Request request = view_.request;
    request.level = show_.request.level ? show_.request.level : view_.request.level;
    request.data = request.data.substr(FolderOf(request.data).size());
    request.map.clear();
    std::vector<std::string> words{"vexel", "render"};
    const std::vector<std::string> arguments = ArgumentsFor(request);
    words.insert(words.end(), arguments.begin(), arguments.end());
    return "<section id=\"files\" data-part aria-labelledby=\"files-title\">\n<h2 "
           "id=\"files-title\">"
           "Take it with you</h2>\n<ul class=\"files\">" +
           list +
           "</ul>\n<p class=\"soft\">The same on the command line:</p>\n"
           "<div class=\"command\"><code id=\"command\">" +
           Plain(ShellText(words)) + "</code></div>\n" + AboutData() + "</section>\n";
  }

  // What the files should be read with.
  std::string AboutData() const {
    std::string about;
    const auto& lost = view_.listener.GetLostRows();
    if (!lost.empty()) about += "<p class=\"soft\">" + Plain(LostRowsText(lost)) + "</p>\n";
    const std::size_t doubts = view_.listener.GetRemarkCount();
    if (doubts > 0) {
      about += "<p class=\"soft\">" + Counted(doubts, "doubtful place") +
               " in the files: <code>vexel check</code> lists them.</p>\n";
    }
    return about;
  }

  static std::string Help() {
    return R"(<dialog id="help" aria-labelledby="help-title">
<h2 id="help-title">Keys</h2>
<dl>
<dt>Tab</dt><dd>to the map, its choices, the table</dd>
<dt>Arrow keys</dt><dd>on the map: to the neighbouring area</dd>
<dt>Enter</dt><dd>down into an area, or to its row</dd>
<dt>Backspace</dt><dd>up again</dd>
<dt>Esc</dt><dd>close what is open</dd>
<dt>?</dt><dd>this help</dd>
</dl>
<form method="dialog"><button type="submit">Close</button></form>
</dialog>
)";
  }

  const Site& site_;
  View& view_;
  Show show_;
  ViewerLinks links_;
  std::vector<std::string> notes_;
  std::optional<ComparedColumn> compared_;
};

}  // namespace

std::string MapPage(const Site& site, View& view, const Show& show, const std::string& trouble) {
  return PageWriter(site, view, show, trouble).Make();
}

}  // namespace vexel::serve
