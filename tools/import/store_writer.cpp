#include "import/store_writer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <unordered_set>
#include <vector>

#include "import/failure.h"
#include "import/json_text.h"
#include "import/new_file.h"

namespace dxl {
namespace {

constexpr std::size_t longestFirstLine = 65536;

// A number to sort by, above that of the note: eight bytes are all that is kept of one.
std::uint64_t sortKey(std::uint32_t by, std::uint32_t note) {
  return std::uint64_t{by} << 32U | note;
}
std::uint32_t sortedBy(std::uint64_t key) { return static_cast<std::uint32_t>(key >> 32U); }
std::uint32_t noteOf(std::uint64_t key) { return static_cast<std::uint32_t>(key); }

void drop(Spool& spool, std::uint32_t note) {
  IndexEntry entry = spool.entry(note);
  entry.isDropped = 1;
  spool.change(note, entry);
}

// Of profiles of one name and user the last stays.
void dropSupersededProfiles(Spool& spool) {
  std::vector<std::uint64_t> profiles;
  profiles.reserve(spool.profiles());
  spool.forEach([&profiles](std::uint32_t note, const IndexEntry& entry) {
    if (entry.isProfile()) profiles.push_back(sortKey(entry.keyHash, note));
  });
  std::sort(profiles.begin(), profiles.end());
  const auto isSame = [](std::uint64_t a, std::uint64_t b) { return sortedBy(a) == sortedBy(b); };
  std::unordered_set<std::string> later;  // keys of one hash
  for (std::size_t i = profiles.size(); i-- > 0;) {
    const bool hasLater = i + 1 < profiles.size() && isSame(profiles[i], profiles[i + 1]);
    if (!hasLater) later.clear();
    const bool hasEarlier = i > 0 && isSame(profiles[i], profiles[i - 1]);
    if (!hasLater && !hasEarlier) continue;
    const std::uint32_t note = noteOf(profiles[i]);
    if (!later.insert(spool.profileKey(spool.entry(note))).second) drop(spool, note);
  }
}

void add(Totals& totals, const IndexEntry& entry) {
  ++(entry.isProfile() ? totals.profiles : totals.notes);
  totals.itemsKept += entry.itemsKept;
  totals.leftOut += entry.itemsLeftOut;
}

// Takes the id from each note that is not the first with it, adds up the numbers of the notes that
// stay, and gives their highest id.
std::uint32_t settleIds(Spool& spool, Totals& totals) {
  std::vector<std::uint64_t> ids;
  ids.reserve(spool.ids());
  spool.forEach([&](std::uint32_t note, const IndexEntry& entry) {
    if (entry.isDropped != 0) return;
    add(totals, entry);
    if (entry.id != 0) ids.push_back(sortKey(entry.id, note));
  });
  std::sort(ids.begin(), ids.end());
  for (std::size_t i = 1; i < ids.size(); ++i) {
    if (sortedBy(ids[i]) != sortedBy(ids[i - 1])) continue;
    IndexEntry entry = spool.entry(noteOf(ids[i]));
    entry.id = 0;
    spool.change(noteOf(ids[i]), entry);
  }
  return ids.empty() ? 0 : sortedBy(ids.back());
}

std::string firstLine(const DatabaseDescription& database, const std::string& target) {
  const std::string replicaId =
      database.replicaId.empty() ? std::string(16, '0') : database.replicaId;
  const std::string line = R"({"database":{"title":)" + jsonText(database.title) +
                           R"(,"replica":")" + replicaId + "\"}}";
  if (line.size() > longestFirstLine)
    throw ImportFailure(target + ": the title does not fit into the first line of a store");
  return line + '\n';
}

class NoteWriter {
 public:
  NoteWriter(Spool& spool, NewFile& file) : spool_(spool), file_(file) {}

  void write(std::uint32_t id, const IndexEntry& entry) {
    file_.write(R"({"note":)" + std::to_string(id));
    file_.write(spool_.members(entry));
    file_.write("\n");
  }

 private:
  Spool& spool_;
  NewFile& file_;
};

}  // namespace

Totals writeStore(Import& import, const std::string& target, bool replaces) {
  Spool& spool = import.spool;
  Totals totals = import.totals;
  spool.flush();
  dropSupersededProfiles(spool);
  std::uint32_t lastId = settleIds(spool, totals);

  NewFile file(target);
  NoteWriter writer(spool, file);
  file.write(firstLine(import.database, target));
  spool.forEach([&](std::uint32_t, const IndexEntry& entry) {
    if (entry.isDropped == 0 && entry.id != 0) writer.write(entry.id, entry);
  });
  spool.forEach([&](std::uint32_t, const IndexEntry& entry) {
    if (entry.isDropped != 0 || entry.id != 0) return;
    if (lastId == std::numeric_limits<std::uint32_t>::max())
      throw ImportFailure(target + ": no note id is left for a note without one");
    writer.write(++lastId, entry);
  });
  file.publish(replaces);
  return totals;
}

}  // namespace dxl
