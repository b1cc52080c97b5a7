#include "report/foreign_text.h"

#include <algorithm>

#include "platform/code_pages.h"
#include "report/entry_head.h"
#include "report/lines.h"

namespace reader {
namespace {

constexpr std::string_view littleEndianMark = "\xFF\xFE";
constexpr std::string_view bigEndianMark = "\xFE\xFF";

// A line that mail quotes, or that was moved in.
std::string_view withoutQuote(std::string_view line) {
  return line.substr(std::min(line.find_first_not_of("> \t"), line.size()));
}

// A line as it was before each of its tabs became blanks, as far as a head goes.
std::string withTabs(std::string_view line) {
  std::string text;
  constexpr std::size_t dateAndBlank = std::string_view("dd-mm-yyyy ").size();
  for (std::size_t at = 0; at < line.size(); ++at) {
    const bool isTab = line[at] == ' ' && at > dateAndBlank;
    if (!isTab || !text.ends_with('\t')) text += isTab ? '\t' : line[at];
  }
  return text;
}

// What became of the heads of a report on its way; nothing if there are none.
std::string_view changeOf(std::string_view bytes) {
  const std::size_t end = bytes.find('\r');
  if (bytes.find('\n') == std::string_view::npos && end != std::string_view::npos &&
      entryHeadOf(bytes.substr(0, end)))
    return "its lines end with CR alone";
  Line line;
  for (std::size_t at = 0; takeLine(bytes, at, line) && !line.isCut;) {
    const std::string_view text = withoutQuote(line.text);
    if (entryHeadOf(text)) return "its lines are quoted or moved in";
    if (entryHeadOf(withTabs(text))) return "its tabs have become blanks";
  }
  return {};
}

}  // namespace

bool isWide(std::string_view bytes) {
  return bytes.starts_with(littleEndianMark) || bytes.starts_with(bigEndianMark);
}

std::string wideAsUtf8(std::string_view bytes) {
  const std::size_t low = bytes.starts_with(bigEndianMark) ? 1 : 0;
  std::u16string units;
  units.reserve(bytes.size() / 2);
  const auto byteAt = [bytes](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
  for (std::size_t at = littleEndianMark.size(); at + 1 < bytes.size(); at += 2)
    units += static_cast<char16_t>(byteAt(at + low) | byteAt(at + 1 - low) << 8U);
  if (bytes.size() % 2 != 0) units += u'\uFFFD';
  return platform::wideToUtf8(units);
}

std::string whyNoEntry(std::string_view bytes) {
  const std::string_view change = changeOf(bytes);
  if (change.empty()) return "it holds no entry of a report";
  std::string words(change);
  return words.append(": ask for the file itself, as an attachment");
}

}  // namespace reader
