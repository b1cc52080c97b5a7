#include "import/report.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <sstream>

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

Report::Report() : isTerminal_(isatty(STDERR_FILENO) != 0) {}

Report::~Report() {
  clearProgress();
  writeOut(pending_);
}

void Report::itemLeftOut(std::uint32_t id, std::string_view name, std::string_view type) {
  line("left out: note " + idText(id) + ", item " + inOneLine(name) + ": " + std::string(type));
}

void Report::profileFormLeftOut(std::uint32_t id) {
  line("left out: note " + idText(id) + ", profile in note form");
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
