#include "standin/note_index.h"

#include <algorithm>
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
    const std::set<std::uint32_t>& ids = textIndex(condition).documentsWith(condition.text);
    if (fewest == nullptr || ids.size() < fewest->size()) fewest = &ids;
  }
  std::vector<SharedNote> documents;
  if (fewest == nullptr) {
    for (const auto& [id, note] : notes_)
      if (!note->profile.has_value()) documents.push_back(note);
    return documents;
  }
  for (const std::uint32_t id : *fewest) {
    SharedNote note = find(id);
    if (std::ranges::all_of(conditions, [&](const auto& one) { return one.holds(*note); }))
      documents.push_back(std::move(note));
  }
  return documents;
}

const TextIndex& NoteIndex::textIndex(const TextCondition& condition) const {
  const std::pair key(condition.item, condition.lowers);
  const auto [place, isNew] = texts_.try_emplace(key, condition.item, condition.lowers);
  if (isNew) {
    for (const auto& [id, note] : notes_)
      if (!note->profile.has_value()) place->second.add(*note);
  }
  return place->second;
}

std::uint32_t NoteIndex::nextId() const {
  const std::uint32_t highest = notes_.empty() ? 0 : notes_.rbegin()->first;
  if (highest == std::numeric_limits<std::uint32_t>::max()) throw Failure(Status::noIdsLeft);
  return highest + 1;
}

}  // namespace standin
