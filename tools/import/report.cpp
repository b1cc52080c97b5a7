#include "import/report.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iostream>
#include <sstream>
#include <vector>

namespace dxl {
namespace {

constexpr std::size_t mostPending = std::size_t{64} << 10U;

std::string idText(std::uint32_t id) {
  if (id == 0) return "-";
  std::ostringstream text;
  text << std::hex << std::uppercase << id;
  return text.str();
}

std::string inOneLine(std::string_view name) {
  std::string text(name);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return text;
}

void writeOut(std::string_view text) { std::cerr << text; }

}  // namespace

Report::Report(std::ostream* list) : list_(list), isTerminal_(isatty(STDERR_FILENO) != 0) {}

Report::~Report() {
  clearProgress();
  writeOut(pending_);
}

void Report::itemLeftOut(std::uint32_t id, std::string_view name, std::string_view type) {
  const std::string shown = inOneLine(name);
  leftOut({std::string(type), shown}, id, "item " + shown + ": " + std::string(type));
}

void Report::profileFormLeftOut(std::uint32_t id) {
  leftOut({"profile in note form", ""}, id, "profile in note form");
}

void Report::leftOut(Kind kind, std::uint32_t id, std::string_view what) {
  constexpr std::size_t mostKinds = 10'000;  // an export may have any number of names
  if (counts_.size() < mostKinds || counts_.contains(kind))
    ++counts_[std::move(kind)];
  else
    ++ofOtherKinds_;
  if (list_ != nullptr) *list_ << "left out: note " << idText(id) << ", " << what << '\n';
}

// The most frequent first.
void Report::table() {
  constexpr std::size_t mostRows = 20;
  std::vector<std::pair<std::uint64_t, Kind>> rows;
  for (const auto& [kind, count] : counts_) rows.emplace_back(count, kind);
  std::ranges::stable_sort(rows, std::ranges::greater(), &std::pair<std::uint64_t, Kind>::first);
  std::uint64_t others = ofOtherKinds_;
  for (std::size_t i = mostRows; i < rows.size(); ++i) others += rows[i].first;
  rows.resize(std::min(rows.size(), mostRows));
  for (const auto& [count, kind] : rows) {
    const std::string number = std::to_string(count);
    line("left out " + std::string(8 - std::min<std::size_t>(8, number.size()), ' ') + number +
         "  " + kind.first + (kind.second.empty() ? "" : "  " + kind.second));
  }
  if (others != 0) line("left out and " + std::to_string(others) + " more");
}

void Report::progress(std::string_view file, std::uint64_t done, std::uint64_t size) {
  if (!isTerminal_) return;
  std::string text =
      inOneLine(file) + ": " + std::to_string(std::min(done, size) * 100 / size) + " %";
  if (text == progress_) return;
  clearProgress();
  writeOut(pending_);
  pending_.clear();
  writeOut(text);
  progress_ = std::move(text);
}

void Report::totals(const Totals& totals) {
  table();
  line("notes " + std::to_string(totals.notes) + ", profiles " + std::to_string(totals.profiles) +
       ", design elements " + std::to_string(totals.designElements) + ", items kept " +
       std::to_string(totals.itemsKept) + ", left out " + std::to_string(totals.leftOut));
}

void Report::failure(std::string_view words) { line(words); }

void Report::clearProgress() {
  if (progress_.empty()) return;
  writeOut("\r\x1B[K");
  progress_.clear();
}

// Lines wait for company: an address book may have millions of them.
void Report::line(std::string_view text) {
  pending_ += text;
  pending_ += '\n';
  if (pending_.size() < mostPending) return;
  clearProgress();
  writeOut(pending_);
  pending_.clear();
}

}  // namespace dxl
