#include "standin/session.h"

#include <charconv>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

#include "standin/caller_text.h"
#include "standin/guard.h"
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

struct NumberVariable {
  const char* name;
  int least;
  int most;
  int otherwise;  // where the variable is unset or empty
  Status wrong;
};

// One that cannot be read fails the start: a zone taken as GMT, for one, would make every time
// wrong in silence.
int numberOf(const store::NotesIni& settings, const NumberVariable& variable) {
  const std::string value = settings.valueOrEmpty(variable.name);
  std::string_view text = store::trimmed(value);
  if (text.empty()) return variable.otherwise;
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || number < variable.least || number > variable.most)
    throw Failure(variable.wrong);
  return number;
}

constexpr NumberVariable zoneVariable = {"Timezone", -23, 23, 0, Status::wrongTimezone};
constexpr NumberVariable lockWaitVariable = {"LockWait", 0, 3'600'000, 10'000,
                                             Status::wrongLockWait};

std::string settingsPath(int argumentCount, const char* const* arguments) {
  if (argumentCount > 1) requireAll(arguments);
  for (int i = 1; i < argumentCount; ++i) {
    const std::string_view argument = textOrEmpty(arguments[i]);
    if (argument.starts_with('=')) return std::string(argument.substr(1));
  }
  return "notes.ini";
}

}  // namespace

Session::Session(store::NotesIni read)
    : settings(std::move(read)),
      dataDirectory(dataDirectoryOf(settings)),
      programDirectory(programDirectoryOf(settings)),
      zone(numberOf(settings, zoneVariable)),
      cache(std::chrono::milliseconds(numberOf(settings, lockWaitVariable))) {}

OpenNote& Session::openNote(NOTEHANDLE handle) {
  OpenNote& open = notes.at(handle);
  if (!databases.contains(open.database)) throw Failure(Status::databaseOfNoteClosed);
  return open;
}

void beginSession(int argumentCount, const char* const* arguments) {
  if (current.has_value()) throw Failure(Status::alreadyInitialised);
  current.emplace(store::NotesIni::read(settingsPath(argumentCount, arguments)));
}

void endSession() noexcept { current.reset(); }

Session& session() {
  if (!current.has_value()) throw Failure(Status::notInitialised);
  return *current;
}

}  // namespace standin
