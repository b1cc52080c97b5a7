#include "note_index.h"

#include <limits>

#include "status.h"

namespace standin {

void NoteIndex::put(const SharedNote& note) {
  // Most come in the order of their ids, the highest last.
  SharedNote& place = notes_.try_emplace(notes_.end(), note->id)->second;
  if (place != nullptr && place->profile.has_value()) {
    const auto former = profiles_.find(place->profile->key());
    if (former != profiles_.end() && former->second == note->id) profiles_.erase(former);
  }
  if (note->profile.has_value()) profiles_[note->profile->key()] = note->id;
  place = note;
}

SharedNote NoteIndex::find(NOTEID id) const {
  const auto found = notes_.find(id);
  return found == notes_.end() ? nullptr : found->second;
}

SharedNote NoteIndex::find(const ProfileName& name) const {
  const auto found = profiles_.find(name.key());
  return found == profiles_.end() ? nullptr : find(found->second);
}

std::vector<SharedNote> NoteIndex::documents() const {
  std::vector<SharedNote> documents;
  documents.reserve(notes_.size());
  for (const auto& [id, note] : notes_)
    if (!note->profile.has_value()) documents.push_back(note);
  return documents;
}

NOTEID NoteIndex::nextId() const {
  const NOTEID highest = notes_.empty() ? 0 : notes_.rbegin()->first;
  if (highest == std::numeric_limits<NOTEID>::max()) throw Failure(Status::noIdsLeft);
  return highest + 1;
}

}  // namespace standin
