#include "documents/event_store.h"

#include <array>

#include "base/text.h"
#include "configuration/quellbright_translation.h"
#include "notes/domino_api_tools.h"
#include "notes/formula_search.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"
#include "notes/nsf_note.h"

namespace documents {
namespace {

using configuration::QuellbrightTranslation;
using notes::FormulaSearch;
using notes::NoteHandle;
using notes::NsfDbConnection;
using notes::NsfNote;
using notes::DominoApiTools::DominoApiError;
using notes::DominoApiTools::errorText;

// By the number of the category; the first three numbers are none. The key of its language text,
// and what is shown where there is no such text.
constexpr std::array internalNames = {u"",           u"",          u"",
                                      u"nab_import", u"user_sync", u"software_update"};
constexpr std::array displayNames = {
    u"", u"", u"", u"User Import", u"User Synchronization", u"Software Updates"};

std::u16string categoryText(std::int32_t category) {
  const auto number = static_cast<std::size_t>(category);
  std::u16string displayName = displayNames.at(number);
  try {
    std::u16string text =
        QuellbrightTranslation::translate("vrxqbevent", internalNames.at(number), displayName);
    if (!text.empty()) return text;
  } catch (const QuellbrightTranslation::QuellbrightTranslationError&) {
    // Language texts that cannot be reached are no reason to lose the event.
  }
  return displayName;
}

}  // namespace

void createEvent(const std::u16string& server, std::int32_t category,
                 const std::u16string& message) {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    notes::OpenNote created;
    const STATUS status = created.create(connection);
    if (status != 0) throw DominoApiError(u"NsfNoteCreate failed with error: " + errorText(status));
    {
      NoteHandle handle(created);
      NsfNote note(handle.handle());
      note.setTextNarrow("Form", "qbEvent");
      note.setTextNarrow("Subject", "Quellbright Event");
      note.setTimeNow("reported");
      note.setText("Server", server);
      note.setNumber("category", static_cast<NUMBER>(category));
      note.setText("category_text", categoryText(category));
      note.setText("event", message);
      handle.update();
    }
    connection.close();
  } catch (const NoteHandle::NoteHandleError& error) {
    throw CreateEventError(u"Could not open or close notehandle: " + error.message());
  } catch (const NsfNote::DominoApiError& error) {
    throw CreateEventError(u"NsfNoteError: " + error.message());
  } catch (const NsfNote::NsfNoteError& error) {
    throw CreateEventError(u"NsfNoteError: " + error.message());
  } catch (const DominoApiError& error) {
    throw CreateEventError(error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw CreateEventError(u"DBconecction failed: " + error.message());
  }
}

void getVrxEvents(std::vector<VrxEvent>& events) {
  try {
    // It does no work: it proves that the database opens.
    NsfDbConnection connection(notes::configurationDatabase);
    FormulaSearch search(notes::configurationDatabase, "SELECT Form=\"qbEvent\"");
    search.search();
    events.reserve(events.size() + search.count());
    for (std::size_t index = 0; index < search.count(); ++index) {
      try {
        loadEvent(search.noteId(index), events);
      } catch (const InsertVrxEventError& error) {
        events.push_back({u"Insert Error", error.message(), u"Now"});
      }
    }
    connection.close();
  } catch (const FormulaSearch::FormulaSearchError& error) {
    throw GetVrxEventsError(u"Formula Error: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw GetVrxEventsError(u"NsfDbConnection Error: " + error.message());
  }
}

void loadEvent(NOTEID id, std::vector<VrxEvent>& events) {
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    VrxEvent event;
    {
      const NoteHandle handle(connection, id);
      const NsfNote note(handle.handle());
      event.categoryText = note.getTextOrEmpty("category_text");
      event.eventText = note.getTextOrEmpty("event");
      event.reported = base::toWideFromLocal(note.getTimeTextOrEmpty("reported").c_str());
    }
    connection.close();
    events.push_back(std::move(event));
  } catch (const NsfNote::NsfNoteError& error) {
    throw InsertVrxEventError(u"NsfNote Error: " + error.message());
  } catch (const NsfNote::DominoApiError& error) {
    throw InsertVrxEventError(u"Domino API Error: " + error.message());
  } catch (const NoteHandle::NoteHandleError& error) {
    throw InsertVrxEventError(u"NoteHandle Error: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw InsertVrxEventError(u"NsfDbConnection Error: " + error.message());
  }
}

std::u16string eventLine(const VrxEvent& event, int /*depth*/) {
  return base::joined({event.reported, u" [", event.categoryText, u"] ", event.eventText});
}

}  // namespace documents
