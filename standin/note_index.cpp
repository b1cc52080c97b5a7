#include "standin/note_index.h"

#include <limits>

#include "standin/status.h"

namespace standin {

void NoteIndex::put(const SharedNote& note) {
  // Most come in the order of their ids, the highest last.
  SharedNote& place = notes_.try_emplace(notes_.end(), note->id)->second;
  if (place != nullptr && place->profile.has_value()) {
    const auto former = profiles_.find(place->profile->key());
    if (former != profiles_.end() && former->second == note->id) profiles_.erase(former);
  }
  if (note->profile.has_value()) profiles_[note->profile->key()] = note->id;
  for (auto& [key, index] : texts_) {
    if (place != nullptr && !place->profile.has_value()) index.remove(*place);
    if (!note->profile.has_value()) index.add(*note);
  }
  place = note;
}

SharedNote NoteIndex::find(std::uint32_t id) const {
  const auto found = notes_.find(id);
  return found == notes_.end() ? nullptr : found->second;
}

SharedNote NoteIndex::find(const store::ProfileName& name) const {
  const auto found = profiles_.find(name.key());
  return found == profiles_.end() ? nullptr : find(found->second);
}

std::vector<SharedNote> NoteIndex::documents(const std::vector<TextCondition>& conditions) const {
  const std::set<std::uint32_t>* fewest = nullptr;
  for (const TextCondition& condition : conditions) {
    const TextIndex* index = textIndex(condition);
    if (index == nullptr) continue;
    const std::set<std::uint32_t>& ids = index->documentsWith(condition.text);
    if (fewest == nullptr || ids.size() < fewest->size()) fewest = &ids;
  }
  std::vector<SharedNote> documents;
  if (fewest != nullptr) {
    documents.reserve(fewest->size());
    for (const std::uint32_t id : *fewest) documents.push_back(find(id));
    return documents;
  }
  documents.reserve(notes_.size());
  for (const auto& [id, note] : notes_)
    if (!note->profile.has_value()) documents.push_back(note);
  return documents;
}

// Null if there are so many already that a formula, which may be of any length, would take too much
// memory.
const TextIndex* NoteIndex::textIndex(const TextCondition& condition) const {
  constexpr std::size_t most = 32;
  const std::pair key(condition.item, condition.letters);
  if (!texts_.contains(key) && texts_.size() == most) return nullptr;
  const auto [place, isNew] = texts_.try_emplace(key, condition.item, condition.letters);
  if (!isNew) return &place->second;
  for (const auto& [id, note] : notes_)
    if (!note->profile.has_value()) place->second.add(*note);
  return &place->second;
}

std::uint32_t NoteIndex::nextId() const {
  const std::uint32_t highest = notes_.empty() ? 0 : notes_.rbegin()->first;
  if (highest == std::numeric_limits<std::uint32_t>::max()) throw Failure(Status::noIdsLeft);
  return highest + 1;
}

}  // namespace standin
