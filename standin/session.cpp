#include "session.h"

#include <charconv>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

#include "guard.h"
#include "text.h"

namespace standin {
namespace {

constexpr std::string_view separators = "/\\";

std::optional<Session> current;

std::string dataDirectoryOf(const NotesIni& settings) {
  std::string directory = settings.valueOrEmpty("Directory");
  if (directory.empty()) throw Failure(Status::noDataDirectory);
  directory.erase(directory.find_last_not_of(separators) + 1);
  return directory;
}

std::string programDirectoryOf(const NotesIni& settings) {
  std::string directory = settings.valueOrEmpty("NotesProgram");
  if (directory.empty()) directory = std::filesystem::current_path().string();
  if (separators.find(directory.back()) == std::string_view::npos)
    directory += directory.find('\\') == std::string::npos ? '/' : '\\';
  return directory;
}

// A zone that cannot be read fails the start: taken as GMT it would make every time wrong in
// silence.
std::chrono::hours zoneOf(const NotesIni& settings) {
  const std::string value = settings.valueOrEmpty("Timezone");
  const std::string_view text = trimmed(value);
  int hours = 0;
  if (text.empty()) return std::chrono::hours(hours);
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, hours);
  if (error != std::errc() || stop != end || hours < -23 || hours > 23)
    throw Failure(Status::wrongTimezone);
  return std::chrono::hours(hours);
}

std::string settingsPath(int argumentCount, const char* const* arguments) {
  if (argumentCount > 1) requireAll(arguments);
  for (int i = 1; i < argumentCount; ++i) {
    const std::string_view argument = textOrEmpty(arguments[i]);
    if (argument.starts_with('=')) return std::string(argument.substr(1));
  }
  return "notes.ini";
}

}  // namespace

Session::Session(NotesIni read)
    : settings(std::move(read)),
      dataDirectory(dataDirectoryOf(settings)),
      programDirectory(programDirectoryOf(settings)),
      zone(zoneOf(settings)) {}

OpenNote& Session::openNote(NOTEHANDLE handle) {
  OpenNote& open = notes.at(handle);
  if (!databases.contains(open.database)) throw Failure(Status::databaseOfNoteClosed);
  return open;
}

void beginSession(int argumentCount, const char* const* arguments) {
  if (current.has_value()) throw Failure(Status::alreadyInitialised);
  current.emplace(NotesIni::read(settingsPath(argumentCount, arguments)));
}

void endSession() noexcept { current.reset(); }

Session& session() {
  if (!current.has_value()) throw Failure(Status::notInitialised);
  return *current;
}

}  // namespace standin
