#include "configuration/sender_filter_cache.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "notes/domino_api_tools.h"
#include "notes/formula_search.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"
#include "notes/nsf_note.h"
#include "platform/clock.h"

namespace configuration {
namespace {

using notes::NsfDbConnection;
using notes::NsfNote;
using notes::DominoApiTools::DominoApiError;
using notes::DominoApiTools::errorText;

// The numbers by which a note tells what its entry is.
constexpr NUMBER notSet = 0;
constexpr NUMBER byEmail = 1;
constexpr NUMBER byDomain = 2;
constexpr NUMBER blackNumber = 1;
constexpr NUMBER whiteNumber = 2;

constexpr std::size_t longestWord = 6;  // of ":Black" and ":White"

NUMBER numberOrNotSet(const NsfNote& note, const char* item) {
  return note.hasValue(item) ? note.getNumber(item) : notSet;
}

std::u16string filterKey(const NsfNote& note, NUMBER action, NUMBER colour) {
  if (colour == notSet) return {};
  if (action == byEmail) return note.getTextOrEmpty("filter_email");
  if (action == byDomain) return note.getTextOrEmpty("filter_domain");
  return {};
}

SenderFilterNote readItems(const NsfNote& note) {
  SenderFilterNote filter;
  filter.originalInput = note.getTextOrEmpty("original_input");
  filter.action = numberOrNotSet(note, "filter_email_or_domain");
  filter.colour = numberOrNotSet(note, "filter_black_or_white");
  filter.key = filterKey(note, filter.action, filter.colour);
  return filter;
}

// What a number says that is either not set or one of two kinds; nothing of any other number.
std::u16string described(std::u16string text, NUMBER number, const char16_t* first,
                         const char16_t* second) {
  if (number == notSet) text += u"Not set.";
  if (number == 1) text += first;
  if (number == 2) text += second;
  return text;
}

}  // namespace

void SenderFilterCache::refresh(bool& reloaded) { refresh(reloaded, platform::currentTime()); }

void SenderFilterCache::refresh(bool& reloaded, std::int64_t now) {
  reloaded = false;
  if (now - lastLoad_ < refreshSeconds_) return;
  load();
  lastLoad_ = now;
  reloaded = true;
}

// What a search has found stays in order, however it ends.
void SenderFilterCache::load() {
  const auto failure = [this](const char16_t* prefix, const base::Error& error) {
    putInOrder();
    return SenderFilterCacheError(prefix + error.message());
  };
  loadErrors_.clear();
  filters_.clear();
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    notes::searchNotes<DominoApiError>(connection, "SELECT @LowerCase(Form) =\"qbsenderfilter\"",
                                       notes::AfterSearch::keep, u"Search failed",
                                       [this](NOTEID id) { addFilter(id); });
    connection.close();
  } catch (const DominoApiError& error) {
    throw failure(u"Could not complete search: ", error);
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw failure(u"Could not complete search - could not open or close database-connection: ",
                  error);
  }
  putInOrder();
  hasErrors_ = !loadErrors_.empty();
}

// Of entries with one key the latest counts: the first of them from behind.
void SenderFilterCache::putInOrder() {
  std::ranges::stable_sort(filters_, {}, &Filter::key);
  const auto sameKey = [](const Filter& one, const Filter& other) { return one.key == other.key; };
  const auto latest = std::unique(filters_.rbegin(), filters_.rend(), sameKey);
  filters_.erase(filters_.begin(), latest.base());
}

// A note of no use does not end the search.
void SenderFilterCache::addFilter(NOTEID id) {
  try {
    readFilter(id);
  } catch (const SenderFilterCacheInternalError& error) {
    loadErrors_.push_back(error.message());
  }
}

// An entry counts although its note does not close.
void SenderFilterCache::readFilter(NOTEID id) {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    notes::OpenNote note;
    STATUS status = note.open(connection, id);
    if (status != 0) throw DominoApiError(u"Could not open note" + errorText(status));
    try {
      enter(readItems(NsfNote(note.handle())));
    } catch (...) {
      note.close();
      throw;
    }
    status = note.close();
    if (status != 0) throw DominoApiError(u"Could not close note" + errorText(status));
    connection.close();
  } catch (const NsfNote::NsfNoteError& error) {
    throw SenderFilterCacheInternalError(u"NsfNote-error: " + error.message());
  } catch (const DominoApiError& error) {
    throw SenderFilterCacheInternalError(u"Domino API-error: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw SenderFilterCacheInternalError(u"DbConnection error: " + error.message());
  }
}

// A colour that is neither leaves no trace.
void SenderFilterCache::enter(SenderFilterNote filter) {
  if (filter.key.empty()) {
    loadErrors_.push_back(
        u"Invalid item (" + filter.originalInput + u"). Action(" +
        described(u"Filter action: ", filter.action, u"By email.", u"By domain.") +
        u"), FilterColor(" + described(u"Filter color: ", filter.colour, u"Black.", u"White.") +
        u")");
  } else if (filter.colour == blackNumber) {
    filters_.push_back({std::move(filter.key), Colour::black});
  } else if (filter.colour == whiteNumber) {
    filters_.push_back({std::move(filter.key), Colour::white});
  }
}

void SenderFilterCache::print(std::u16string& out, unsigned indent) const {
  const std::u16string prefix = base::newLine(indent);
  constexpr std::u16string_view title = u"SENDERFILTER CACHE";
  // A list of 100,000 is copied again and again while it grows, unless its size is known.
  std::size_t size = out.size() + title.size();
  for (const auto& [key, colour] : filters_) size += prefix.size() + key.size() + longestWord;
  out.reserve(size);
  out.append(title);
  for (const auto& [key, colour] : filters_) {
    out.append(prefix).append(key).append(u":").append(printWord(colour));
  }
}

const char16_t* SenderFilterCache::printWord(Colour colour) {
  switch (colour) {
    case Colour::black:
      return u"Black";
    case Colour::white:
      return u"White";
    default:
      return u"None";
  }
}

}  // namespace configuration
