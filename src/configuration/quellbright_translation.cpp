#include "configuration/quellbright_translation.h"

#include <vector>

#include "notes/domino_api_tools.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"
#include "notes/nsf_note.h"

namespace configuration {
namespace {

using notes::NsfDbConnection;
using notes::NsfNote;
using notes::ProfileNoteHandle;

constexpr const char* languageProfile = "qblanguage";

// An entry without "=" is a key of its whole length, and its own text: the position behind no "="
// is the start.
std::u16string entryKey(const std::u16string& entry) { return entry.substr(0, entry.find(u'=')); }
std::u16string entryText(const std::u16string& entry) { return entry.substr(entry.find(u'=') + 1); }

std::u16string findText(const NsfDbConnection& connection, const std::string& section,
                        const std::u16string& key, const std::u16string& fallback) {
  const ProfileNoteHandle profile(connection, languageProfile);
  const NsfNote note(profile.handle());
  if (!note.hasValue(section)) return fallback;
  std::vector<std::u16string> entries;
  note.getTextList(section, entries, true);
  for (const std::u16string& entry : entries) {
    if (entryKey(entry) == key) return entryText(entry);
  }
  return fallback;
}

}  // namespace

std::u16string QuellbrightTranslation::translate(const std::string& section,
                                                 const std::u16string& key,
                                                 const std::u16string& fallback) {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    std::u16string text = findText(connection, section, key, fallback);
    connection.close();
    return text;
  } catch (const notes::DominoApiTools::DominoApiError& error) {
    throw QuellbrightTranslationError(u"Domino API Error: " + error.message());
  } catch (const ProfileNoteHandle::ProfileNoteHandleError& error) {
    throw QuellbrightTranslationError(u"ProfileNote error" + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw QuellbrightTranslationError(u"DbConnection error: " + error.message());
  } catch (const NsfNote::NsfNoteInvalidItemType& error) {
    throw QuellbrightTranslationError(u"Nsf Note error: " + error.message());
  } catch (const NsfNote::NsfNoteItemNotPresent& error) {
    throw QuellbrightTranslationError(u"Could not find section: " + error.message());
  }
}

}  // namespace configuration
