#include "kit/site/area_table.h"

#include "kit/publish/fills.h"
#include "kit/report/area_parents.h"
#include "kit/report/page_pieces.h"
#include "kit/request/markup.h"
#include "kit/request/values.h"
#include "kit/site/pieces.h"

namespace vexel {

namespace {

class TableWriter {
 public:
  TableWriter(View& view, const TableChoice& choice, const TableRows& rows, const Links& links,
              const ComparedColumn* compared)
      : view_(view), choice_(choice), rows_(rows), links_(links), compared_(compared) {}

  std::string Make() {
    hasParents_ = view_.map.GetDrawLevel() > view_.map.GetDrawRoot()->GetLevel() + 1;
    std::string table = Pager() +
                        "<div id=\"rows\" role=\"region\" aria-label=\"Rows of the table\""
                        " tabindex=\"0\">\n<table class=\"areas\">\n<caption>" +
                        MarkupText(XmlText(view_.map.GenerateTitle().View())) +
                        "</caption>\n<thead>" + Heads() + "</thead>\n<tbody>\n";
    for (const CMapOb* area : rows_.areas) AppendRow(table, *area);
    return table + "</tbody>\n</table>\n</div>\n";
  }

 private:
  // The head of a column that the table can be sorted by; a second time it goes down.
  std::string Head(std::string_view sort, const std::string& text,
                   std::string_view attributes = "") {
    const bool isSorted = choice_.sort == sort;
    std::string head = "<th scope=\"col\"";
    head.append(attributes);
    if (isSorted) head += choice_.down ? " aria-sort=\"descending\"" : " aria-sort=\"ascending\"";
    return head + ">" +
           LinkMarkup(links_.ToSorted(sort, isSorted && !choice_.down), text,
                      " id=\"by-" + std::string(sort) + "\"") +
           "</th>";
  }

  std::string Heads() {
    std::string heads = "<tr>" + Head("name", LevelHeading(view_.map));
    if (hasParents_) heads += Head("parent", "Part of");
    heads += Head("value", MarkupText(XmlText(SubjectOf(view_))), " class=\"n\"");
    if (compared_ != nullptr) {
      heads += "<th scope=\"col\" class=\"n\">" + MarkupText(compared_->Name()) + "</th>";
    }
    return heads + "<th scope=\"col\">Group</th></tr>";
  }

  std::string Range() const {
    if (rows_.found == 0) return "No area is like that.";
    const std::size_t first = kTableRows * static_cast<std::size_t>(rows_.page - 1);
    return "Rows " + std::to_string(first + 1) + " to " +
           std::to_string(first + rows_.areas.size()) + " of " + std::to_string(rows_.found);
  }

  std::string Pager() const {
    std::string pager = "<p class=\"pager\"><span>" + Range() + "</span>";
    const auto turn = [&](int page, std::string_view text, std::string_view attributes) {
      if (page >= 1 && page <= rows_.pages) {
        pager += ' ' + LinkMarkup(links_.ToRows(page), text, attributes);
      }
    };
    turn(rows_.page - 1, "Previous", " id=\"previous\" rel=\"prev\"");
    turn(rows_.page + 1, "Next", " id=\"next\" rel=\"next\"");
    return pager + "</p>\n";
  }

  void AppendRow(std::string& table, const CMapOb& area) const {
    const int slot = SlotOf(view_, area);
    const std::string name = NameMarkup(area.GetName().View());
    table += "<tr data-key=\"" + KeyText(area.GetArea()) +
             (&area == choice_.kept ? "\" id=\"kept\" aria-current=\"true" : "") +
             "\"><th scope=\"row\">";
    const bool hasParts = area.GetNumChildren() > 0;
    table += LinkMarkup(hasParts ? links_.ToPlace(&area) : links_.ToRow(area), name) + "</th>";
    if (hasParents_) table += "<td>" + ParentCell(area) + "</td>";
    table += "<td class=\"n\">" + MarkupText(Value(area)) + "</td>";
    if (compared_ != nullptr) {
      table += "<td class=\"n\">" + MarkupText(compared_->TextFor(area)) + "</td>";
    }
    table += "<td>" + SwatchMarkup(view_, slot) +
             MarkupText(XmlText(view_.legend.GetRow(slot).text)) + "</td></tr>\n";
  }

  // All that the area lies in, the innermost first, with a link each.
  std::string ParentCell(const CMapOb& area) const {
    std::string cell;
    for (const CMapOb* node = area.GetParent(); node != nullptr && node != view_.map.GetDrawRoot();
         node = node->GetParent()) {
      cell += (cell.empty() ? "" : ", ") +
              LinkMarkup(links_.ToPlace(node), NameMarkup(node->GetName().View()));
    }
    return cell;
  }

  std::string Value(const CMapOb& area) const {
    return XmlText(ValueText(view_, area, view_.listener.GetSeparators(),
                             std::string(view_.legend.noDataText.View())));
  }

  View& view_;
  const TableChoice& choice_;
  const TableRows& rows_;
  const Links& links_;
  const ComparedColumn* compared_;
  bool hasParents_ = false;
};

}  // namespace

std::string TableMarkup(View& view, const TableChoice& choice, const TableRows& rows,
                        const Links& links, const ComparedColumn* compared) {
  return TableWriter(view, choice, rows, links, compared).Make();
}

}  // namespace vexel
