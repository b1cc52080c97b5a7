#include "import/spool.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "import/failure.h"
#include "import/new_file.h"

namespace dxl {
namespace {

constexpr std::size_t pieceSize = std::size_t{256} << 10U;

std::string_view bytesOf(const IndexEntry& entry) {
  return {reinterpret_cast<const char*>(&entry), sizeof entry};
}

IndexEntry entryOf(std::string_view bytes) {
  IndexEntry entry;
  std::memcpy(&entry, bytes.data(), sizeof entry);
  return entry;
}

std::uint64_t positionOf(std::uint32_t number) {
  return std::uint64_t{number} * sizeof(IndexEntry);
}

}  // namespace

SpoolFile::SpoolFile(Descriptor file) : file_(std::move(file)) {}

void SpoolFile::append(std::string_view bytes) {
  pending_ += bytes;
  if (pending_.size() >= pieceSize) flush();
}

void SpoolFile::flush() {
  file_.write(pending_);
  written_ += pending_.size();
  pending_.clear();
}

std::string_view SpoolFile::read(std::uint64_t position, std::size_t size) {
  const bool isInWindow =
      position >= windowPosition_ && position + size <= windowPosition_ + window_.size();
  if (!isInWindow) {
    window_.resize(std::max(size, pieceSize));
    window_.resize(file_.readAt(position, window_.data(), window_.size()));
    windowPosition_ = position;
  }
  if (window_.size() < size) throw ImportFailure(file_.path() + ": ends too early");
  return std::string_view(window_).substr(position - windowPosition_, size);
}

std::string SpoolFile::readAlone(std::uint64_t position, std::size_t size) const {
  std::string bytes(size, '\0');
  if (file_.readAt(position, bytes.data(), size) < size)
    throw ImportFailure(file_.path() + ": ends too early");
  return bytes;
}

void SpoolFile::overwrite(std::uint64_t position, std::string_view bytes) {
  file_.writeAt(position, bytes);
  window_.clear();
}

Spool::Spool(const std::string& target)
    : notes_(openUnlisted(target)), index_(openUnlisted(target)) {}

void Spool::append(const SpooledNote& note) {
  if (count_ == std::numeric_limits<std::uint32_t>::max())
    throw Flaw("more notes than there are note ids");
  IndexEntry entry;
  entry.position = notes_.size();
  entry.membersSize = note.members.size();
  entry.keySize = static_cast<std::uint32_t>(note.profileKey.size());
  entry.keyHash = static_cast<std::uint32_t>(std::hash<std::string>()(note.profileKey));
  entry.id = note.id;
  entry.itemsKept = note.itemsKept;
  entry.itemsLeftOut = note.itemsLeftOut;
  notes_.append(note.profileKey);
  notes_.append(note.members);
  index_.append(bytesOf(entry));
  ++count_;
  if (entry.isProfile()) ++profiles_;
  if (entry.id != 0) ++ids_;
}

void Spool::flush() {
  notes_.flush();
  index_.flush();
}

void Spool::forEach(const std::function<void(std::uint32_t, const IndexEntry&)>& action) {
  for (std::uint32_t number = 0; number < count_; ++number)
    action(number, entryOf(index_.read(positionOf(number), sizeof(IndexEntry))));
}

IndexEntry Spool::entry(std::uint32_t number) const {
  return entryOf(index_.readAlone(positionOf(number), sizeof(IndexEntry)));
}

void Spool::change(std::uint32_t number, const IndexEntry& entry) {
  index_.overwrite(positionOf(number), bytesOf(entry));
}

std::string Spool::profileKey(const IndexEntry& entry) const {
  return notes_.readAlone(entry.position, entry.keySize);
}

std::string_view Spool::members(const IndexEntry& entry) {
  return notes_.read(entry.position + entry.keySize, entry.membersSize);
}

}  // namespace dxl
