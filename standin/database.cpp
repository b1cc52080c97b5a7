#include "standin/database.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <thread>

#include "standin/status.h"
#include "store/file_failures.h"

namespace standin {
namespace {

constexpr store::FileStatuses statuses(Status refused) {
  return {Status::databaseMissing, Status::databaseIsNoFile, Status::databaseLinkLoop,
          Status::databasePathTooLong, refused};
}

// A system that goes down in the midst of a write may leave zeros for what it has not written.
std::string_view withoutZeros(std::string_view text) {
  return text.substr(0, text.find_last_not_of('\0') + 1);
}

std::string_view withoutReturn(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

store::DatabaseInfo infoFrom(std::string_view line) {
  const auto info = store::readDatabaseLine(withoutReturn(line));
  if (!info.has_value()) throw Failure(Status::foreignFile);
  return *info;
}

// Nothing for a last line that is torn.
std::optional<store::Note> noteFrom(std::string_view line, bool isLast, std::size_t number) {
  std::optional<store::Note> note = store::readNoteLine(withoutReturn(line));
  if (note.has_value() || (isLast && store::isTorn(line))) return note;
  throw Failure(Status::lineDamaged,
                "Line " + std::to_string(number) + " of the database is damaged");
}

}  // namespace

void Database::refresh() {
  store::withFile(statuses(Status::databaseUnreadable), [this] {
    store::File file(path_, store::Access::read);
    lock(file, store::Access::read);
    look(file);
  });
}

store::Moment Database::changed() const {
  return std::chrono::floor<store::Moment::duration>(state_.value().changed);
}

// The locks of the systems wait for ever or not at all. A pause that is short against a write lets
// one who waits in between two writes of another who writes without end.
void Database::lock(store::File& file, store::Access access) {
  constexpr auto pause = std::chrono::microseconds(250);
  const auto end = std::chrono::steady_clock::now() + lockWait_;
  while (!file.tryLock(access)) {
    if (std::chrono::steady_clock::now() >= end) {
      lockWait_ = {};
      throw Failure(Status::databaseLocked);
    }
    std::this_thread::sleep_for(pause);
  }
}

void Database::look(const store::File& file) {
  const store::FileState state = file.state();
  if (state_ == state) return;
  read(file, state.size);
  state_ = state;
}

void Database::read(const store::File& file, std::uint64_t size) {
  // A file whose first line is longer is no store. Nothing more is read of it: it may be a database
  // of another library, of any size.
  const std::string head =
      file.read(0, std::min<std::uint64_t>(size, store::longestDatabaseLine + 1));
  const std::string_view first = std::string_view(head).substr(0, head.find('\n'));
  if (withoutZeros(first).size() > store::longestDatabaseLine) throw Failure(Status::foreignFile);

  const std::string whole = file.read(0, size);
  const std::string_view text = withoutZeros(whole);
  std::optional<store::DatabaseInfo> info;
  NoteIndex notes;
  std::size_t at = 0;
  for (std::size_t number = 1; at < text.size(); ++number) {
    const std::size_t feed = text.find('\n', at);
    const bool isLast = feed == std::string_view::npos;
    const std::string_view line = text.substr(at, feed - at);
    if (number == 1) {
      info = infoFrom(line);
    } else if (!withoutReturn(line).empty()) {
      auto note = noteFrom(line, isLast, number);
      if (!note.has_value()) break;
      notes.put(std::make_shared<const store::Note>(*std::move(note)));
    }
    at = isLast ? text.size() : feed + 1;
  }
  if (!info.has_value()) throw Failure(Status::foreignFile);
  info_ = *std::move(info);
  notes_ = std::move(notes);
  kept_ = at;
  lacksFeed_ = text[at - 1] != '\n';
}

// Puts aside what the next write cuts off: a person may have written it.
void Database::keepTorn(const store::File& file) const {
  const std::uint64_t size = state_.value().size;
  if (kept_ == size) return;
  try {
    store::File torn(path_ + ".torn", store::Access::create);
    torn.append(torn.state().size, file.read(kept_, size) + '\n');
  } catch (const std::system_error&) {
    throw Failure(Status::tornNotKept);
  }
}

std::uint32_t Database::idFor(const store::Note& note) const {
  if (note.profile.has_value()) {
    const SharedNote profile = notes_.find(*note.profile);
    return profile == nullptr ? notes_.nextId() : profile->id;
  }
  if (note.id == 0) return notes_.nextId();
  if (notes_.find(note.id) == nullptr) throw Failure(Status::noSuchNote);
  return note.id;
}

void Database::write(store::Note& note) {
  store::withFile(statuses(Status::databaseUnwritable), [this, &note] {
    store::File file(path_, store::Access::write);
    lock(file, store::Access::write);
    look(file);
    store::Note written = note;
    written.id = idFor(note);
    const std::string line = (lacksFeed_ ? "\n" : "") + store::noteLine(written);
    keepTorn(file);
    file.append(kept_, line);
    note.id = written.id;
    notes_.put(std::make_shared<const store::Note>(std::move(written)));
    kept_ += line.size();
    lacksFeed_ = false;
    state_ = file.state();
  });
}

std::shared_ptr<Database> DatabaseCache::open(const std::string& path) {
  std::shared_ptr<Database>& database = databases_[path];
  if (database == nullptr) database = std::make_shared<Database>(path, lockWait_);
  database->refresh();
  return database;
}

}  // namespace standin
