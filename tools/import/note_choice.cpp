#include "import/note_choice.h"

#include <algorithm>

namespace dxl {

void NoteChoice::learn(const store::Note& note) {
  if (note.profile.has_value()) {
    lastProfiles_[note.profile->key()] = {++profiles_, note.id};
  } else if (note.id != 0) {
    ids_.push_back(note.id);
  }
}

void NoteChoice::settle() {
  for (const auto& [key, profile] : lastProfiles_)
    if (profile.id != 0) ids_.push_back(profile.id);
  std::sort(ids_.begin(), ids_.end());
  ids_.erase(std::unique(ids_.begin(), ids_.end()), ids_.end());
  restart();
}

void NoteChoice::restart() {
  profiles_ = 0;
  isGivenOut_.assign(ids_.size(), false);
}

// A note that was never learned stands in an export that has changed, of which others take care.
NoteChoice::Fate NoteChoice::fateOf(const store::Note& next) {
  if (next.profile.has_value()) {
    const auto last = lastProfiles_.find(next.profile->key());
    ++profiles_;
    if (last == lastProfiles_.end() || last->second.number != profiles_) return Fate::dropped;
  }
  const auto found = std::lower_bound(ids_.begin(), ids_.end(), next.id);
  if (found == ids_.end() || *found != next.id) return Fate::getsId;
  auto isGivenOut = isGivenOut_[static_cast<std::size_t>(found - ids_.begin())];
  if (isGivenOut) return Fate::getsId;
  isGivenOut = true;
  return Fate::keepsId;
}

}  // namespace dxl
