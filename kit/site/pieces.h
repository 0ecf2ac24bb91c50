// Small pieces of markup of which pages about a view are made.

#ifndef VEXEL_KIT_SITE_PIECES_H_
#define VEXEL_KIT_SITE_PIECES_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "kit/palettes/palettes.h"
#include "kit/site/links.h"
#include "kit/view/view.h"

namespace vexel {

// Pages of more areas show the GIF page, which stays small, and have somebody else find areas.
inline constexpr std::size_t kMostDrawnAreas = 5000;
inline bool HasVectors(const View& view) { return view.areas.size() <= kMostDrawnAreas; }

// A request for the picture on such a page, which has the title and the legend itself.
VEXEL_API Request BareRequest(Request request);

// A link with markup inside; the markup alone where the address is empty. `attributes` begin with a
// blank each.
VEXEL_API std::string LinkMarkup(std::string_view address, std::string_view markup,
                                 std::string_view attributes = "");

// A name from a file, isolated from the direction of the text around it.
VEXEL_API std::string NameMarkup(std::string_view name);

// The colour of a slot of the legend as a picture without a meaning of its own.
VEXEL_API std::string SwatchMarkup(const View& view, int slot);

// The colours of a palette side by side, likewise.
VEXEL_API std::string StripMarkup(const Palette& palette, int groups, bool reverse);

// The way from the whole map to what is on show; its last part is no link.
VEXEL_API std::string PathMarkup(const View& view, const Links& links);

// The legend as a table with the number of areas of each group. `chosen` is the slot by which the
// table of areas is cut down.
VEXEL_API std::string LegendMarkup(const View& view, const Links& links, std::optional<int> chosen);

// A list of sentences; nothing for none.
VEXEL_API std::string NotesMarkup(std::span<const std::string> notes);

// The areas without a value, the first hundred by name; nothing where there is none.
VEXEL_API std::string MissingMarkup(const View& view, const Links& links);

// What the picture is to those who do not see it.
VEXEL_API std::string AlternativeText(View& view);

}  // namespace vexel

#endif  // VEXEL_KIT_SITE_PIECES_H_
