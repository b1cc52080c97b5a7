#include "import/import.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <functional>
#include <limits>
#include <utility>

#include "import/export_file.h"
#include "import/export_reader.h"
#include "import/new_file.h"
#include "import/note_choice.h"
#include "import/xml_reader.h"
#include "store/file.h"
#include "store/line.h"

namespace dxl {
namespace {

bool isStore(const std::string& path) {
  std::string line(store::longestDatabaseLine + 1, '\0');
  line.resize(ExportFile(path).read(line.data(), line.size()));
  line.erase(std::min(line.find_first_of("\r\n"), line.size()));
  return store::readDatabaseLine(line).has_value();
}

// The store if it exists, as it has to be.
std::optional<struct stat> checkedStore(const ImportOptions& options) {
  if (options.store.empty() || options.store.ends_with('/'))
    throw ImportFailure(options.store + ": is not the name of a file");
  struct stat status {};
  if (stat(options.store.c_str(), &status) != 0) {
    if (errno != ENOENT) failBySystem(options.store);
    return std::nullopt;
  }
  if (!options.replaces) throw ImportFailure(options.store + ": exists; --force replaces it");
  if (!S_ISREG(status.st_mode))
    throw ImportFailure(options.store + ": is not a file that can be replaced");
  return status;
}

// What would fail at the end of a long run fails at its beginning. The states of the exports.
std::vector<store::FileState> checkFiles(const ImportOptions& options) {
  const std::optional<struct stat> store = checkedStore(options);
  std::vector<store::FileState> states;
  for (const std::string& path : options.exports) {
    const store::FileState& state = states.emplace_back(ExportFile(path).state());
    if (store.has_value() && state.volume == store->st_dev && state.file == store->st_ino)
      throw ImportFailure(options.store + ": is one of the exports");
  }
  if (store.has_value() && store->st_size != 0 && !isStore(options.store))
    throw ImportFailure(options.store + ": is no store, and nothing else is replaced");
  return states;
}

std::string firstLine(const store::DatabaseInfo& database, const std::string& target) {
  std::string line = store::databaseLine(database);
  if (line.size() - 1 > store::longestDatabaseLine)
    throw ImportFailure(target + ": the title does not fit into the first line of a store");
  return line;
}

// The exports are read once to know which notes stay under which ids, and once more for the notes
// themselves: so they are kept nowhere, however many there are. Notes that get an id stand behind
// those that have one, and are read for once again.
class Import {
 public:
  Import(const ImportOptions& options, Report& report)
      : options_(options), report_(report), states_(checkFiles(options)), file_(options.store) {}

  Totals run() {
    const auto learn = [this](const store::Note& note) {
      choice_.learn(note);
      return true;
    };
    file_.write(firstLine(readAll(&report_, learn).database, options_.store));
    choice_.settle();
    const Totals totals = writeNotesWithIds();
    if (withoutIds_ > 0) writeNotesThatGetIds();
    file_.publish(options_.replaces);
    return totals;
  }

 private:
  Reading readAll(Report* leftOut, std::function<bool(store::Note&)> take) {
    Reading reading{options_.zone, leftOut, std::move(take), options_.strip};
    for (std::size_t i = 0; i < states_.size(); ++i) {
      ExportFile file(options_.exports[i]);
      file.requireState(states_[i]);
      readExport(file, reading, report_);
    }
    return reading;
  }

  Totals writeNotesWithIds() {
    const auto take = [this](const store::Note& note) {
      const NoteChoice::Fate fate = choice_.fateOf(note);
      if (fate == NoteChoice::Fate::keepsId) file_.write(store::noteLine(note));
      if (fate == NoteChoice::Fate::getsId) ++withoutIds_;
      return fate != NoteChoice::Fate::dropped;
    };
    return readAll(nullptr, take).totals;
  }

  void writeNotesThatGetIds() {
    std::uint32_t lastId = choice_.highestId();
    if (withoutIds_ > std::numeric_limits<std::uint32_t>::max() - lastId)
      throw ImportFailure(options_.store + ": no note id is left for a note without one");
    choice_.restart();
    readAll(nullptr, [this, &lastId](store::Note& note) {
      const bool getsId = choice_.fateOf(note) == NoteChoice::Fate::getsId;
      if (getsId) {
        note.id = ++lastId;
        file_.write(store::noteLine(note));
      }
      return getsId;
    });
  }

  const ImportOptions& options_;
  Report& report_;
  std::vector<store::FileState> states_;  // of the exports
  NewFile file_;
  NoteChoice choice_;
  std::uint64_t withoutIds_ = 0;
};

struct RootReader : ElementHandler {
  struct Done {};

  std::optional<std::string> path;

  void start(const Element& element) override {
    if (const char* const value = element.find("path")) path = value;
    throw Done();
  }
  void end() override {}
  void text(std::string_view) override {}
};

}  // namespace

Totals importExports(const ImportOptions& options, Report& report) {
  return Import(options, report).run();
}

std::optional<std::string> pathOfExport(const std::string& file) {
  ExportFile opened(file);
  RootReader reader;
  try {
    readXml(opened, reader, [](std::uint64_t) {});
  } catch (const RootReader::Done&) {
  }
  return reader.path;
}

}  // namespace dxl
