#include "offline/mail_files.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

#include "offline/files.h"
#include "offline/messages.h"
#include "offline/stored_notes.h"
#include "store/letters.h"

namespace offline {
namespace {

namespace fs = std::filesystem;

// The parts of a path below the data folder; nothing if the path leaves it, be it for a moment.
std::optional<std::vector<std::string>> partsWithin(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  const bool hasDrive = path.size() > 1 && path[1] == ':';
  if (path.starts_with('/') || hasDrive) return std::nullopt;
  std::vector<std::string> parts;
  int depth = 0;
  for (const fs::path& part : fs::path(path)) {
    depth += part == ".." ? -1 : part == "." ? 0 : 1;
    if (depth < 0) return std::nullopt;
    parts.push_back(part.string());
  }
  return parts;
}

bool refusesThePath(const std::error_code& error) {
  constexpr std::array codes = {std::errc::filename_too_long, std::errc::not_a_directory,
                                std::errc::file_exists,       std::errc::is_a_directory,
                                std::errc::invalid_argument,  std::errc::illegal_byte_sequence};
  return std::ranges::any_of(codes, [&error](std::errc code) { return error == code; });
}

void layOut(const std::vector<std::string>& parts, const store::DatabaseInfo& database,
            const fs::path& data) {
  fs::path file = data;
  for (std::size_t at = 0; at + 1 < parts.size(); ++at) {
    file /= parts[at];
    fs::create_directory(file);
  }
  file /= parts.back();
  if (!fs::exists(file)) writeNewFile(file, store::databaseLine(database));
}

void layOutOrWarn(const std::string& path, const store::DatabaseInfo* database,
                  const fs::path& data) {
  const auto parts = partsWithin(path);
  if (!parts) {
    warn("the mail file " + path + " is passed over: its path leaves the data folder");
    return;
  }
  if (database == nullptr) return;
  try {
    layOut(*parts, *database, data);
  } catch (const fs::filesystem_error& error) {
    if (!refusesThePath(error.code())) throw;
    warn("the mail file " + path + " is passed over: " + error.code().message());
  }
}

}  // namespace

void layOutMailFiles(const fs::path& book, const std::string& server, const Recipients& recipients,
                     const fs::path& data) {
  visitNotes(book, [&](const store::Note& note) {
    const std::string& type = textOf(note, "type");
    const std::string& path = textOf(note, "mailfile");
    if (note.profile.has_value() || (type != "Person" && type != "Database")) return;
    if (path.empty() || !store::equalNames(textOf(note, "mailserver"), server)) return;
    const auto found = recipients.find(recipientKey(server, path));
    layOutOrWarn(completeMailPath(path), found == recipients.end() ? nullptr : &found->second,
                 data);
  });
}

}  // namespace offline
