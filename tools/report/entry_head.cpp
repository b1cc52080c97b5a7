#include "report/entry_head.h"

#include <algorithm>

#include "report/lines.h"

namespace reader {
namespace {

// As many digits as `text` has at `at`, without zeros before them; moves behind them.
std::string_view takeNumber(std::string_view text, std::size_t& at) {
  const std::size_t begin = at;
  while (at < text.size() && isDigit(text[at])) ++at;
  std::string_view digits = text.substr(begin, at - begin);
  while (digits.size() > 1 && digits.front() == '0') digits.remove_prefix(1);
  return digits;
}

// dd-mm-yyyy hh:mm:ss
std::optional<std::uint64_t> parsedTime(std::string_view text) {
  constexpr std::string_view form = "00-00-0000 00:00:00";
  constexpr std::size_t order[] = {6, 7, 8, 9, 3, 4, 0, 1, 11, 12, 14, 15, 17, 18};
  if (text.size() < form.size()) return std::nullopt;
  for (std::size_t at = 0; at < form.size(); ++at) {
    if (form[at] == '0' ? !isDigit(text[at]) : text[at] != form[at]) return std::nullopt;
  }
  std::uint64_t time = 0;
  for (const std::size_t at : order) time = time * 10 + static_cast<std::uint64_t>(text[at] - '0');
  return time;
}

}  // namespace

std::optional<EntryHead> entryHeadOf(std::string_view line) {
  const auto time = parsedTime(line);
  std::size_t at = std::string_view("dd-mm-yyyy hh:mm:ss").size();
  const auto skip = [&](std::string_view literal) {
    const bool isThere = line.substr(std::min(at, line.size())).starts_with(literal);
    at += literal.size();
    return isThere;
  };
  if (!time || !skip("\t(")) return std::nullopt;
  EntryHead head{*time, takeNumber(line, at), {}, 0};
  if (head.process.empty() || !skip(":")) return std::nullopt;
  head.thread = takeNumber(line, at);
  if (head.thread.empty() || !skip(")")) return std::nullopt;
  // Programs on the way trim lines.
  if (at < line.size() && !skip("\t")) return std::nullopt;
  head.size = at;
  return head;
}

}  // namespace reader
