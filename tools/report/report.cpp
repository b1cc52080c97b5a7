#include "report/report.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <optional>
#include <utility>

#include "report/entry_head.h"
#include "report/foreign_text.h"
#include "report/line_form.h"
#include "report/text.h"

namespace reader {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

constexpr std::string_view textOfTestFile = "This is a sample output from the diagnistic tool.";

// A section whose entries are told by where they stand: from one first line to another.
struct Span {
  Section section;
  std::string_view begin;
};

constexpr Span spans[] = {{Section::installedUpdates, "SEARCHING FOR INSTALLED UPDATES..."},
                          {Section::testEvents, "Creating quellbright test events."},
                          {Section::events, "Testing Get VRX events:"}};

bool endsSpan(Section section, std::string_view text) {
  if (section == Section::testEvents) return text == "Done creating quellbright test events.";
  if (section == Section::events) return text == Report::lastText;
  const Match head = matchHead(text);
  return head.form != nullptr && sectionOf(*head.form) == section && text != spans[0].begin;
}

// Whether the lines behind a first line that is empty make it the configuration.
bool isConfiguration(std::string_view bytes, std::size_t at) {
  Line line;
  if (!takeLine(bytes, at, line) || !line.text.empty()) return false;
  std::size_t blankLines = 0;
  while (takeLine(bytes, at, line) && isBlank(line.text)) ++blankLines;
  return blankLines > 0 && !line.isCut && line.text == configurationTitle;
}

}  // namespace

Report::Report(std::string bytes) : bytes_(std::move(bytes)) {
  if (isWide(bytes_)) {
    bytes_ = wideAsUtf8(bytes_);
  } else if (bytes_.starts_with(byteOrderMark)) {
    begin_ = byteOrderMark.size();
  }
  findEntries();
  if (entries_.empty()) throw NoReport(whyNoEntry(bytes_));
  if (entries_.size() > 1 && firstLine(entries_[1]) == textOfTestFile)
    throw NoReport("it is the file of the access test: the report lies beside it");
  isOverwritten_ = firstLine(entries_.front()) != firstText;
  groupRuns(readingOrder());
  for (const Run& run : runs_) tellSections(run);
}

std::string_view Report::firstLine(const Entry& entry) const {
  std::size_t at = entry.textBegin;
  Line line;
  takeLine(bytes_, at, line);
  return line.text;
}

std::span<const EntryNumber> Report::takeSection(std::span<const EntryNumber>& rest) const {
  std::size_t size = std::min<std::size_t>(rest.size(), 1);
  const auto sectionAt = [&](std::size_t at) { return entries_[rest[at]].section; };
  while (size > 0 && size < rest.size() && sectionAt(size) == sectionAt(0) &&
         sectionAt(0) != Section::importing)
    ++size;
  const auto section = rest.first(size);
  rest = rest.subspan(size);
  return section;
}

// Runs have their numbers in the order of the file here.
void Report::findEntries() {
  std::map<std::pair<std::string_view, std::string_view>, std::uint32_t> numbers;
  std::uint32_t lineNumber = 0;
  Line line;
  for (std::size_t at = begin_; takeLine(bytes_, at, line) && !line.isCut;) {
    ++lineNumber;
    const std::optional<EntryHead> head = entryHeadOf(line.text);
    if (!head) continue;
    const auto begin = static_cast<std::size_t>(line.text.data() - bytes_.data());
    const bool isSame = !runs_.empty() && !entries_.empty() &&
                        runs_[entries_.back().run].process == head->process &&
                        runs_[entries_.back().run].thread == head->thread;
    std::uint32_t run = isSame ? entries_.back().run : 0;
    if (!isSame) {
      const auto [found, isNew] = numbers.try_emplace({head->process, head->thread},
                                                      static_cast<std::uint32_t>(runs_.size()));
      if (isNew) runs_.push_back({head->process, head->thread, {}});
      run = found->second;
    }
    entries_.push_back(
        {begin, begin + head->size, head->time, lineNumber, run, Section::unknown, false});
  }
}

// The section that an entry's own first line tells.
Section Report::toldSection(const Entry& entry) const {
  const std::string_view text = firstLine(entry);
  if (const Match head = matchHead(text); head.form != nullptr) return sectionOf(*head.form);
  if (text.empty() && isConfiguration(bytes_, entry.textBegin)) return Section::configuration;
  // The beginning of the events may be lost.
  if (isOverwritten_ && text.find(" [") != std::string_view::npos) return Section::events;
  return Section::unknown;
}

// Of an overwritten report the parts stand in the reverse order.
std::vector<EntryNumber> Report::readingOrder() const {
  std::vector<EntryNumber> order(entries_.size());
  std::iota(order.begin(), order.end(), EntryNumber{0});
  if (!isOverwritten_) return order;
  Section known = Section::startingLog;
  std::reverse(order.begin(), order.end());
  auto partEnd = order.end();
  for (EntryNumber number = 0; number < entries_.size(); ++number) {
    const Section section = toldSection(entries_[number]);
    const bool isKnown = section != Section::unknown;
    const bool begins =
        number > 0 && (entries_[number].time < entries_[number - 1].time ||
                       (isKnown && section < known) || firstLine(entries_[number - 1]) == lastText);
    if (isKnown) known = section;
    if (!begins) continue;
    const auto partBegin = order.end() - static_cast<std::ptrdiff_t>(number);
    std::reverse(partBegin, partEnd);
    partEnd = partBegin;
  }
  std::reverse(order.begin(), partEnd);
  return order;
}

void Report::groupRuns(std::vector<EntryNumber> order) {
  constexpr auto none = static_cast<std::uint32_t>(-1);
  std::vector<std::uint32_t> newNumbers(runs_.size(), none);
  std::vector<Run> ordered;
  for (const EntryNumber number : order) {
    std::uint32_t& run = entries_[number].run;
    if (newNumbers[run] == none) {
      newNumbers[run] = static_cast<std::uint32_t>(ordered.size());
      ordered.push_back(runs_[run]);
    }
    run = newNumbers[run];
  }
  runs_ = std::move(ordered);
  order_ = std::move(order);
  const auto runOf = [this](EntryNumber number) { return entries_[number].run; };
  if (runs_.size() > 1) std::ranges::stable_sort(order_, {}, runOf);
  for (std::size_t begin = 0, end = 0; begin < order_.size(); begin = end) {
    const std::uint32_t run = runOf(order_[begin]);
    while (end < order_.size() && runOf(order_[end]) == run) ++end;
    runs_[run].entries = std::span(order_).subspan(begin, end - begin);
  }
}

void Report::tellSections(const Run& run) {
  const Span* span = nullptr;
  std::string_view before;
  for (const EntryNumber number : run.entries) {
    Entry& entry = entries_[number];
    const std::string_view text = firstLine(entry);
    if (text == firstText) span = nullptr;
    entry.section = span == nullptr ? toldSection(entry) : span->section;
    if (span == nullptr) {
      const auto found = std::ranges::find(spans, text, &Span::begin);
      if (found != std::end(spans)) span = found;
    } else if (endsSpan(span->section, text)) {
      span = nullptr;
    }
    entry.isMisplaced =
        text.starts_with("Error Testing Get VRX events: ") && before != "Testing Get VRX events:";
    before = text;
  }
}

}  // namespace reader
