#include "standin/database.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <thread>

#include "standin/status.h"
#include "store/file_failures.h"

namespace standin {
namespace {

// A file whose first line is longer is no store. Nothing more is read of such a file: it may be a
// database of another library, of any size.
constexpr std::uint64_t longestFirstLine = 65536;

// The last bytes of a file before its place `end`, which a look keeps.
std::string bytesBefore(const store::File& file, std::uint64_t end) {
  constexpr std::uint64_t most = 1024;
  return file.read(end - std::min(end, most), end);
}

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

[[noreturn]] void failAtLine(std::size_t number) {
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
  return std::chrono::floor<store::Moment::duration>(look_.state.changed);
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
  if (look_.lines > 0 && state == look_.state) return;
  if (broken_.has_value() && broken_->state == state) throw Failure(broken_->failure);
  try {
    if (!lookBehind(file, state)) lookAnew(file, state);
  } catch (const Failure& failure) {
    broken_ = {state, failure};
    throw;
  }
}

// Reads on from the last look. False if the file is another, if it has changed in another way than
// by growing, or if its last line may not have been the whole of it.
bool Database::lookBehind(const store::File& file, const store::FileState& state) {
  if (look_.lines == 0 || look_.endsWithoutFeed() || !state.isSameFile(look_.state) ||
      state.size <= look_.state.size)
    return false;
  if (bytesBefore(file, look_.end) != look_.before) return false;

  Look next = look_;
  next.state = state;
  for (const SharedNote& note : readNotes(file, next)) notes_.put(note);
  look_ = std::move(next);
  return true;
}

void Database::lookAnew(const store::File& file, const store::FileState& state) {
  const std::string text = file.read(0, std::min(state.size, longestFirstLine + 1));
  const std::string_view line = withoutZeros(std::string_view(text).substr(0, text.find('\n')));
  if (line.size() > longestFirstLine) throw Failure(Status::foreignFile);
  const auto info = store::readDatabaseLine(withoutReturn(line));
  if (!info.has_value()) throw Failure(Status::foreignFile);

  Look next;
  next.state = state;
  next.kept = line.size();
  NoteIndex index;
  if (std::string_view(text).substr(line.size()).starts_with('\n')) {
    next.lines = 1;
    next.end = line.size() + 1;
    for (const SharedNote& note : readNotes(file, next)) index.put(note);
  } else if (!withoutZeros(file.read(line.size(), state.size)).empty()) {
    throw Failure(Status::foreignFile);
  }
  info_ = *info;
  notes_ = std::move(index);
  look_ = std::move(next);
}

// The notes of what stands behind the end of `look`, which moves behind the last of them that has
// its line feed. The file is read in pieces, which serve each other's memory.
std::vector<SharedNote> Database::readNotes(const store::File& file, Look& look) {
  constexpr std::uint64_t pieceSize = 0x40000;  // bytes
  std::vector<SharedNote> notes;
  store::NoteReader reader;
  std::string text;
  for (std::uint64_t at = look.end; at < look.state.size; at += pieceSize) {
    const std::size_t searched = text.size();
    text += file.read(at, std::min(at + pieceSize, look.state.size));
    text.erase(0, readLines(text, searched, reader, look, notes));
  }
  look.kept = look.end;
  look.before = bytesBefore(file, look.end);
  const std::string_view rest = withoutZeros(text);
  if (rest.empty()) return notes;
  auto last = store::readNoteLine(withoutReturn(rest), reader);
  if (!last.has_value() && !store::isTorn(rest)) failAtLine(look.lines + 1);
  if (!last.has_value()) return notes;
  notes.push_back(std::make_shared<const store::Note>(*std::move(last)));
  look.kept += rest.size();
  return notes;
}

// Adds the notes of the lines that have their line feed, the first of which stands at `searched` or
// behind it. Gives the length of what was read.
std::size_t Database::readLines(std::string_view text, std::size_t searched,
                                store::NoteReader& reader, Look& look,
                                std::vector<SharedNote>& notes) {
  std::size_t begin = 0;
  for (auto feed = text.find('\n', searched); feed != std::string_view::npos;
       feed = text.find('\n', begin)) {
    const std::string_view line = withoutReturn(text.substr(begin, feed - begin));
    ++look.lines;
    look.end += feed + 1 - begin;
    begin = feed + 1;
    if (line.empty()) continue;
    auto note = store::readNoteLine(line, reader);
    if (!note.has_value()) failAtLine(look.lines);
    notes.push_back(std::make_shared<const store::Note>(*std::move(note)));
  }
  return begin;
}

// Puts aside what the next write cuts off: a person may have written it.
void Database::keepTorn(const store::File& file) const {
  if (look_.kept == look_.state.size) return;
  try {
    store::File torn(path_ + ".torn", store::Access::create);
    torn.append(torn.state().size, file.read(look_.kept, look_.state.size) + '\n');
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
    const std::string line = store::noteLine(written);

    // A last line that counts gets the line feed that it lacks; one that does not is cut off.
    keepTorn(file);
    file.append(look_.kept, (look_.endsWithoutFeed() ? "\n" : "") + line);
    note.id = written.id;
    try {
      look(file);
    } catch (...) {  // the note is written all the same, and the next look takes it in
    }
  });
}

std::shared_ptr<Database> DatabaseCache::open(const std::string& path) {
  std::shared_ptr<Database>& database = databases_[path];
  if (database == nullptr) database = std::make_shared<Database>(path, lockWait_);
  database->refresh();
  return database;
}

}  // namespace standin
