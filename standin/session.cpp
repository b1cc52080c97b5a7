#include "standin/session.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

#include "standin/caller_text.h"
#include "standin/guard.h"
#include "store/file.h"
#include "store/letters.h"

namespace standin {
namespace {

constexpr std::string_view separators = "/\\";

std::optional<Session> current;

std::string dataDirectoryOf(const store::NotesIni& settings) {
  std::string directory = settings.valueOrEmpty("Directory");
  if (directory.empty()) throw Failure(Status::noDataDirectory);
  directory.erase(directory.find_last_not_of(separators) + 1);
  if (directory.size() >= NOTES_PATH_SIZE) throw Failure(Status::dataDirectoryTooLong);
  return directory;
}

std::string programDirectoryOf(const store::NotesIni& settings) {
  std::string directory = settings.valueOrEmpty("NotesProgram");
  if (directory.empty()) directory = std::filesystem::current_path().string();
  if (separators.find(directory.back()) == std::string_view::npos)
    directory += directory.find('\\') == std::string::npos ? '/' : '\\';
  if (directory.size() >= NOTES_PATH_SIZE) throw Failure(Status::programDirectoryTooLong);
  return directory;
}

// One that cannot be read fails the start: a zone taken as GMT, for one, would make every time
// wrong in silence.
std::chrono::hours zoneOf(const store::NotesIni& settings) {
  const std::string value = settings.valueOrEmpty("Timezone");
  if (store::trimmed(value).empty()) return {};
  const auto zone = store::zoneFrom(value);
  if (!zone.has_value()) throw Failure(Status::wrongTimezone);
  return *zone;
}

std::chrono::milliseconds lockWaitOf(const store::NotesIni& settings) {
  constexpr int most = 3'600'000;
  constexpr int usual = 10'000;
  const std::string value = settings.valueOrEmpty("LockWait");
  if (store::trimmed(value).empty()) return std::chrono::milliseconds(usual);
  const std::optional<int> wait = store::numberFrom(value, 0, most);
  if (!wait.has_value()) throw Failure(Status::wrongLockWait);
  return std::chrono::milliseconds(*wait);
}

std::string settingsPath(int argumentCount, const char* const* arguments) {
  if (argumentCount > 1) requireAll(arguments);
  for (int i = 1; i < argumentCount; ++i) {
    const std::string_view argument = arguments[i] == nullptr ? "" : arguments[i];
    if (argument.starts_with('=')) return std::string(argument.substr(1));
  }
  return "notes.ini";
}

}  // namespace

Session::Session(store::NotesIni read)
    : settings(std::move(read)),
      dataDirectory(dataDirectoryOf(settings)),
      programDirectory(programDirectoryOf(settings)),
      zone(zoneOf(settings)),
      cache(lockWaitOf(settings)) {}

OpenNote& Session::openNote(NOTEHANDLE handle) {
  OpenNote& open = notes.at(handle);
  if (!databases.contains(open.database)) throw Failure(Status::databaseOfNoteClosed);
  return open;
}

void beginSession(int argumentCount, const char* const* arguments) {
  if (current.has_value()) throw Failure(Status::alreadyInitialised);
  current.emplace(store::NotesIni::read(store::nativePath(settingsPath(argumentCount, arguments))));
}

void endSession() noexcept { current.reset(); }

Session& session() {
  if (!current.has_value()) throw Failure(Status::notInitialised);
  return *current;
}

}  // namespace standin
