#include "database.h"

#include <algorithm>
#include <string_view>
#include <system_error>

#include "status.h"

namespace standin {
namespace {

// A file whose first line is longer is no store. Nothing more is read of such a file: it may be a
// database of another library, of any size.
constexpr std::uint64_t longestFirstLine = 65536;

// The bytes of a text before its place `end` that a look keeps.
std::string bytesBefore(std::string_view text, std::size_t end) {
  constexpr std::size_t most = 1024;
  const std::size_t kept = std::min(end, most);
  return std::string(text.substr(end - kept, kept));
}

// Calls `work`, which uses the file; what the system refuses gets its status, by default `refused`.
template <typename Work>
auto withFile(Status refused, Work work) {
  try {
    return work();
  } catch (const std::system_error& error) {
    if (error.code() == std::errc::no_such_file_or_directory)
      throw Failure(Status::databaseMissing);
    if (error.code() == std::errc::is_a_directory) throw Failure(Status::databaseIsNoFile);
    throw Failure(refused);
  }
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
  withFile(Status::databaseUnreadable, [this] { look(StoreFile(path_, Access::read)); });
}

Moment Database::changed() const {
  return std::chrono::floor<Moment::duration>(look_.state.changed);
}

void Database::look(const StoreFile& file) {
  const FileState state = file.state();
  if (look_.lines > 0 && state == look_.state) return;
  if (!lookBehind(file, state)) lookAnew(file, state);
}

// Reads on from the last look. False if the file is another, if it has changed in another way than
// by growing, or if its last line may not have been the whole of it.
bool Database::lookBehind(const StoreFile& file, const FileState& state) {
  if (look_.lines == 0 || look_.endsWithoutFeed || !state.isSameFile(look_.state) ||
      state.size <= look_.state.size)
    return false;
  const std::size_t known = look_.before.size();
  const std::string text = file.read(look_.end - known, state.size);
  if (!text.starts_with(look_.before)) return false;

  Look next = look_;
  next.state = state;
  std::vector<Note> notes = readNotes(std::string_view(text).substr(known), next);
  next.before = bytesBefore(text, known + static_cast<std::size_t>(next.end - look_.end));
  for (Note& note : notes) notes_.put(std::move(note));
  look_ = std::move(next);
  return true;
}

void Database::lookAnew(const StoreFile& file, const FileState& state) {
  std::string text = file.read(0, std::min(state.size, longestFirstLine));
  const std::string_view first = std::string_view(text).substr(0, text.find('\n'));
  const auto info = readDatabaseLine(withoutReturn(first));
  const bool firstHasFeed = first.size() < text.size();
  if (!info.has_value() || (!firstHasFeed && text.size() < state.size))
    throw Failure(Status::foreignFile);
  if (text.size() < state.size) text += file.read(text.size(), state.size);

  Look next;
  next.state = state;
  next.endsWithoutFeed = !firstHasFeed;
  std::vector<Note> notes;
  if (firstHasFeed) {
    next.lines = 1;
    next.end = first.size() + 1;
    notes = readNotes(std::string_view(text).substr(first.size() + 1), next);
    next.before = bytesBefore(text, static_cast<std::size_t>(next.end));
  }
  NoteIndex index;
  for (Note& note : notes) index.put(std::move(note));
  info_ = *info;
  notes_ = std::move(index);
  look_ = std::move(next);
}

// The notes of the lines in `text`, which stands behind the end of `look`; moves the look behind
// the last of them that has its line feed.
std::vector<Note> Database::readNotes(std::string_view text, Look& look) {
  std::vector<Note> notes;
  for (std::size_t feed = text.find('\n'); feed != std::string_view::npos; feed = text.find('\n')) {
    const std::string_view line = withoutReturn(text.substr(0, feed));
    ++look.lines;
    look.end += feed + 1;
    text.remove_prefix(feed + 1);
    if (line.empty()) continue;
    auto note = readNoteLine(line);
    if (!note.has_value()) failAtLine(look.lines);
    notes.push_back(std::move(*note));
  }
  auto last = readNoteLine(withoutReturn(text));
  look.endsWithoutFeed = last.has_value();
  if (last.has_value()) notes.push_back(std::move(*last));
  return notes;
}

NOTEID Database::idFor(const Note& note) const {
  if (note.profile.has_value()) {
    const SharedNote profile = notes_.find(*note.profile);
    return profile == nullptr ? notes_.nextId() : profile->id;
  }
  if (note.id == 0) return notes_.nextId();
  if (notes_.find(note.id) == nullptr) throw Failure(Status::noSuchNote);
  return note.id;
}

void Database::write(Note& note) {
  withFile(Status::databaseUnwritable, [this, &note] {
    StoreFile file(path_, Access::write);
    look(file);
    Note written = note;
    written.id = idFor(note);
    const std::string line = noteLine(written);

    // A last line that counts gets the line feed that it lacks; one that does not is cut off.
    const std::string feed = look_.endsWithoutFeed ? "\n" : "";
    file.append(look_.endsWithoutFeed ? look_.state.size : look_.end, feed + line);
    note.id = written.id;
    try {
      look(file);
    } catch (...) {  // the note is written all the same, and the next look takes it in
    }
  });
}

std::shared_ptr<Database> DatabaseCache::open(const std::string& path) {
  const auto found = databases_.find(path);
  auto database = found == databases_.end() ? std::make_shared<Database>(path) : found->second;
  database->refresh();
  databases_.try_emplace(path, database);
  return database;
}

}  // namespace standin
