#include "offline/settings.h"

#include <algorithm>
#include <set>

#include "offline/files.h"
#include "offline/messages.h"
#include "store/letters.h"
#include "store/status.h"

namespace offline {
namespace {

// The next line of `text`, with its line end, which is taken from its front.
std::string_view takeLine(std::string_view& text) {
  const std::size_t end = text.find_first_of("\r\n");
  const bool isPair = end != std::string_view::npos && text.substr(end).starts_with("\r\n");
  const std::size_t size = end == std::string_view::npos ? text.size() : end + (isPair ? 2 : 1);
  const std::string_view line = text.substr(0, size);
  text.remove_prefix(size);
  return line;
}

std::vector<Setting>::const_iterator settingOf(std::string_view line,
                                               const std::vector<Setting>& settings) {
  const std::string_view name = line.substr(0, line.find('='));
  if (name.size() == line.size()) return settings.end();
  return std::ranges::find_if(
      settings, [name](const Setting& setting) { return store::equalNames(name, setting.name); });
}

}  // namespace

Settings Settings::read(const std::filesystem::path& file) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  std::string text = contentOf(file);
  if (text.starts_with(byteOrderMark)) text.erase(0, byteOrderMark.size());
  try {
    return Settings(std::move(text));
  } catch (const store::Failure& failure) {
    throw Failed(file.string() + ": " +
                 std::string(store::wordsOf(static_cast<std::uint16_t>(failure.status()))));
  }
}

std::string Settings::value(std::string_view name) const {
  return std::string(store::trimmed(variables_.valueOrEmpty(name)));
}

std::string Settings::textWith(const std::vector<Setting>& replaced) const {
  std::string result;
  std::set<std::string> written;
  for (std::string_view rest = text_; !rest.empty();) {
    const std::string_view line = takeLine(rest);
    const auto setting = settingOf(line, replaced);
    if (setting == replaced.end()) {
      result += line;
    } else if (written.insert(setting->name).second) {
      const std::size_t end = std::min(line.find_first_of("\r\n"), line.size());
      result.append(line.substr(0, line.find('=') + 1)).append(setting->value);
      result.append(line.substr(end));
    }
  }
  if (!result.empty() && !result.ends_with('\n') && !result.ends_with('\r')) result += '\n';
  for (const Setting& setting : replaced) {
    if (!written.contains(setting.name)) result += setting.name + '=' + setting.value + '\n';
  }
  return result;
}

std::string listOfBooks(std::string_view names, const std::vector<ExportedStore>& books) {
  std::string list;
  std::set<std::string> listed;
  const auto add = [&list](std::string_view entry) {
    list.append(list.empty() ? "" : ",").append(entry);
  };
  for (const std::string_view entry : store::booksFrom(names)) {
    const std::string file = store::fileOfBook(entry);
    const auto book = std::ranges::find_if(books, [&file](const ExportedStore& candidate) {
      return store::equalNames(candidate.name, file);
    });
    if (book == books.end()) continue;
    // The system here may tell the letters of the two cases apart.
    add(file == book->name ? entry : std::string_view(book->name));
    listed.insert(book->name);
  }
  for (const ExportedStore& book : books) {
    if (!listed.contains(book.name)) add(book.name);
  }
  return list;
}

}  // namespace offline
