#include "offline/configuration.h"

#include <algorithm>

#include "offline/stored_notes.h"
#include "store/letters.h"

namespace offline {
namespace {

// A line of a database has an end; with escapes each byte takes six of its bytes at most.
std::string titleThatFits(const std::string& title) {
  constexpr std::size_t most = store::longestDatabaseLine / 6 - 64;
  std::size_t size = std::min(title.size(), most);
  while (size < title.size() && size > 0 &&
         (static_cast<unsigned char>(title[size]) & 0xC0U) == 0x80)
    --size;
  return title.substr(0, size);
}

}  // namespace

Configuration readConfiguration(const std::filesystem::path& file) {
  Configuration configuration;
  visitNotes(file, [&configuration](const store::Note& note) {
    if (note.profile.has_value()) {
      const auto& [profile, user] = *note.profile;
      configuration.isOfAddOn = true;
      configuration.hasCustomerProfile |= store::equalNames(profile, "qbcustomerprofile");
      if (store::equalNames(profile, "qbserverprofile") && !user.empty())
        configuration.servers.push_back(user);
      return;
    }
    const std::string form = store::lowered(textOf(note, "form"));
    configuration.isOfAddOn |= form.starts_with("qb");
    const std::string& path = textOf(note, "filepath");
    if (path.empty() || form != "qbprofile") return;
    // A replica id that is none counts as missing, as in an import.
    configuration.recipients.try_emplace(
        recipientKey(textOf(note, "server"), path),
        store::DatabaseInfo{titleThatFits(textOf(note, "name")),
                            store::replicaIdFrom(textOf(note, "replicaid")).value_or(0)});
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
