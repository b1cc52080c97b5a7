#include "offline/configuration.h"

#include <algorithm>

#include "offline/stored_notes.h"
#include "store/letters.h"

namespace offline {
namespace {

// A replica id that is none counts as missing, as in an import.
std::string replicaIdFrom(const std::string& text) {
  constexpr std::size_t size = 16;
  const bool isOne =
      text.size() == size && text.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos;
  return isOne ? text : std::string(size, '0');
}

}  // namespace

Configuration readConfiguration(const std::filesystem::path& store) {
  Configuration configuration;
  visitNotes(store, [&configuration](const StoredNote& note) {
    if (store::equalNames(note.profile, "qbserverprofile") && !note.user.empty())
      configuration.servers.push_back(note.user);
    if (!note.profile.empty() || store::lowered(note.text("form")) != "qbprofile") return;
    const std::string& path = note.text("filepath");
    if (path.empty()) return;
    configuration.recipients.try_emplace(
        recipientKey(note.text("server"), path),
        MailDatabase{note.text("name"), replicaIdFrom(note.text("replicaid"))});
  });
  return configuration;
}

std::string recipientKey(std::string_view server, std::string_view path) {
  std::string key = completeMailPath(path);
  std::replace(key.begin(), key.end(), '/', '\\');
  // A line feed ends no name of a server and begins no path.
  return store::lowered(std::string(server).append("\n").append(key));
}

std::string completeMailPath(std::string_view path) {
  std::string complete(path);
  if (!path.ends_with("nsf") && !path.ends_with("ntf")) complete += ".nsf";
  return complete;
}

}  // namespace offline
