#include "host.h"

#include <langinfo.h>
#include <locale.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <new>

#include "kit/files/printable.h"
#include "program.h"

namespace vexel::cli {

namespace {

constexpr std::size_t kLongestName = 32;
constexpr std::size_t kLongestLine = 500;
constexpr std::size_t kRemarksShown = 5;
constexpr std::size_t kMessagesShown = 20;
constexpr std::chrono::milliseconds kBeforeBar{400};

volatile std::sig_atomic_t interrupted = 0;

void NoteInterrupt(int /*signal*/) { interrupted = 1; }

struct Glyph {
  std::string_view text;
  char character;
};

// What locales put between digits, as the one byte that the library takes.
constexpr std::array kGlyphs{Glyph{".", '.'},      Glyph{",", ','},      Glyph{" ", ' '},
                             Glyph{"'", '\''},     Glyph{"\u00A0", ' '}, Glyph{"\xA0", ' '},
                             Glyph{"\u202F", ' '}, Glyph{"\u2019", '\''}};

char CharacterFor(std::string_view text) {
  const auto* found = std::find_if(kGlyphs.begin(), kGlyphs.end(),
                                   [=](const Glyph& glyph) { return glyph.text == text; });
  return found == kGlyphs.end() ? '\0' : found->character;
}

std::string GroupedByThousands(std::size_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3; text.insert(at, 1, ',')) at -= 3;
  return text;
}

// The locale that the environment names, read without making it the process's own. Where it has
// nothing that one byte could stand for, the defaults hold.
NumberSeparators LocaleSeparators() {
  NumberSeparators separators;
  errno = 0;
  const locale_t named = ::newlocale(LC_NUMERIC_MASK, "", nullptr);
  if (named == nullptr && errno == ENOMEM) throw std::bad_alloc();
  if (named == nullptr) return separators;
  const std::string thousand = ::nl_langinfo_l(THOUSEP, named);
  const std::string decimal = ::nl_langinfo_l(RADIXCHAR, named);
  ::freelocale(named);
  if (CharacterFor(decimal) == '\0') return separators;
  separators.decimal = CharacterFor(decimal);
  separators.thousand = CharacterFor(thousand);
  if (separators.thousand == '\0') separators.thousand = separators.decimal == '.' ? ',' : ' ';
  return separators;
}

}  // namespace

void Say(std::initializer_list<std::string_view> parts) noexcept {
  constexpr std::string_view kAfterName = ": ";
  constexpr std::string_view kMore = "...";
  std::array<char, kLongestName + kAfterName.size() + kLongestLine + kMore.size() + 1> line;
  const std::string_view name = kProgram.name.substr(0, kLongestName);
  char* to = std::copy(name.begin(), name.end(), line.data());
  to = std::copy(kAfterName.begin(), kAfterName.end(), to);
  std::size_t room = kLongestLine;
  bool isWhole = true;
  for (const std::string_view part : parts) {
    const std::string_view fits = part.substr(0, room);
    to = CopyPrintable(fits, to);
    room -= fits.size();
    isWhole = isWhole && fits.size() == part.size();
  }
  if (!isWhole) to = std::copy(kMore.begin(), kMore.end(), to);
  *to++ = '\n';
  std::fwrite(line.data(), 1, static_cast<std::size_t>(to - line.data()), stderr);
}

bool CliHost::ShowsProgress() const { return progressWanted_ && ::isatty(STDERR_FILENO) != 0; }

void CliHost::Tell(const std::string& message) {
  if (++messageCount_ > kMessagesShown) return;
  ClearBar();
  Say(message);
}

void CliHost::TellOfMoreMessages(bool endsWithOne) const {
  if (messageCount_ <= kMessagesShown) return;
  const std::size_t hidden = messageCount_ - kMessagesShown - (endsWithOne ? 1 : 0);
  // Numbers that are short enough for a string take no memory.
  if (hidden > 0) Say({"and ", GroupedByThousands(hidden), " more"});
  if (endsWithOne) Say(GetLastMessage());
}

void CliHost::Doubt(const RemarkInfo& /*remark*/, const std::string& sentence) {
  if (!remarksWanted_ || GetRemarkCount() > kRemarksShown) return;
  ClearBar();
  Say(sentence);
}

void CliHost::TellOfMoreRemarks() const {
  if (!remarksWanted_ || GetRemarkCount() <= kRemarksShown) return;
  // A number that is short enough for a string takes no memory.
  Say({std::to_string(GetRemarkCount() - kRemarksShown),
       " more doubtful places; `vexel check FILE` lists them all"});
}

void CliHost::OpenProgress() {
  percent_ = 0;
  interrupted = 0;
  opened_ = std::chrono::steady_clock::now();
  beforeProgress_ = std::signal(SIGINT, NoteInterrupt);
}

void CliHost::SetProgressRange(int lower, int upper) {
  lower_ = lower;
  upper_ = upper;
}

void CliHost::SetProgressPosition(int position) {
  const std::int64_t range = std::max<std::int64_t>(std::int64_t{upper_} - lower_, 1);
  const auto percent = static_cast<int>((std::int64_t{position} - lower_) * 100 / range);
  if (percent == percent_) return;
  percent_ = percent;
  if (std::chrono::steady_clock::now() - opened_ < kBeforeBar) return;
  barShown_ = true;
  DrawBar(std::clamp(percent, 0, 100));
}

void CliHost::DrawBar(int percent) const {
  constexpr int kWidth = 25;
  const auto full = static_cast<std::size_t>(percent * kWidth / 100);
  const std::string bar = std::string(full, '#') + std::string(kWidth - full, '.');
  std::fprintf(stderr, "\rvexel: %s [%s] %3d%%", progressText_.c_str(), bar.c_str(), percent);
}

bool CliHost::ProgressCancelled() { return interrupted != 0; }

void CliHost::ClearBar() {
  constexpr const char* kClearLine = "\r\033[K";
  if (barShown_) std::fputs(kClearLine, stderr);
  barShown_ = false;
}

void CliHost::CloseProgress() {
  ClearBar();
  if (beforeProgress_ != SIG_ERR) std::signal(SIGINT, beforeProgress_);
  beforeProgress_ = SIG_ERR;
}

NumberSeparators CliHost::DefaultSeparators() const { return LocaleSeparators(); }

}  // namespace vexel::cli
