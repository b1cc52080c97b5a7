#include "store/notes_ini.h"

#include <algorithm>
#include <charconv>

#include "store/file.h"
#include "store/file_failures.h"
#include "store/letters.h"

namespace store {
namespace {

constexpr FileStatuses statuses = {Status::settingsUnreadable, Status::settingsNoFile,
                                   Status::settingsLinkLoop, Status::settingsPathTooLong,
                                   Status::settingsUnreadable};

// By its mark, or by the zero beside its first letter.
bool isWide(std::string_view text) {
  if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) return true;
  return text.size() > 1 && (text[0] == '\0') != (text[1] == '\0');
}

}  // namespace

NotesIni NotesIni::read(const std::string& path) {
  return withFile(statuses, [&path] {
    const File file(path, Access::read);
    return NotesIni(file.read(0, file.state().size));
  });
}

NotesIni::NotesIni(std::string_view content) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (isWide(content)) throw Failure(Status::settingsWide);
  if (content.starts_with(byteOrderMark)) content.remove_prefix(byteOrderMark.size());
  const std::string whole = asUtf8(std::string(content));
  std::string_view text = whole;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    const std::size_t mark = line.find('=');
    if (mark == std::string_view::npos || mark == 0) continue;
    values_.try_emplace(lowered(line.substr(0, mark)), line.substr(mark + 1));
  }
}

const std::string* NotesIni::find(std::string_view name) const {
  const auto found = values_.find(lowered(name));
  return found == values_.end() ? nullptr : &found->second;
}

std::string NotesIni::valueOrEmpty(std::string_view name) const {
  const std::string* value = find(name);
  return value == nullptr ? std::string() : *value;
}

std::optional<int> numberFrom(std::string_view value, int least, int most) {
  std::string_view text = trimmed(value);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || number < least || number > most) return std::nullopt;
  return number;
}

std::optional<std::chrono::hours> zoneFrom(std::string_view value) {
  constexpr int farthest = 23;
  const std::optional<int> hours = numberFrom(value, -farthest, farthest);
  if (!hours.has_value()) return std::nullopt;
  return std::chrono::hours(*hours);
}

std::vector<std::string_view> booksFrom(std::string_view value) {
  std::vector<std::string_view> books;
  while (!value.empty()) {
    const std::size_t size = std::min(value.find(','), value.size());
    const std::string_view book = trimmed(value.substr(0, size));
    if (!book.empty()) books.push_back(book);
    value.remove_prefix(std::min(size + 1, value.size()));
  }
  return books;
}

std::string fileOfBook(std::string_view book) {
  constexpr std::string_view extension = ".nsf";
  std::string file(book);
  if (!lowered(book).ends_with(extension)) file += extension;
  return file;
}

}  // namespace store
