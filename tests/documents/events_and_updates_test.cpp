#include <stdexcept>

#include "configuration/quellbright_translation.h"
#include "documents/event_store.h"
#include "documents/installed_updates.h"
#include "notes/formula_search.h"
#include "notes/nsf_db_connection.h"
#include "support/notes_server.h"

namespace {

using base::ReportLog;
using configuration::QuellbrightTranslation;

using test::closeFailure;
using test::openFailure;
using test::unknown;

std::string eventNote(int id, const std::string& text) {
  return "{\"note\":" + std::to_string(id) +
         ",\"items\":{\"Form\":\"qbEvent\",\"reported\":{\"time\":\"2012-05-30T14:07:00.25Z\"},"
         "\"category_text\":\"C\",\"event\":\"" +
         text + "\"}}\n";
}

class Documents : public test::NotesServer {
 protected:
  // What a step writes to the report, a line each, without the first.
  template <typename Step>
  std::vector<std::string> linesOf(Step step) {
    ReportLog report(folder_.wide(), u"Report-", u".log", u"N", u"%H", 2, false);
    report.open();
    step(report, false);
    report.close();
    const auto file = test::onlyFile(folder_.path(), "Report-");
    std::string content = test::contentOf(file);
    std::filesystem::remove(file);
    std::vector<std::string> lines;
    for (std::size_t end = 0; (end = content.find("\r\n")) != std::string::npos;
         content.erase(0, end + 2)) {
      const std::string line = content.substr(0, end);
      const bool isFirst = line.find(")\t") == std::string::npos;
      lines.push_back(isFirst ? line : line.substr(line.find(")\t") + 2));
    }
    lines.erase(lines.begin());
    return lines;
  }
};

TEST_F(Documents, EventsAreListedInOrderAndWithWhatTheyHave) {
  start(eventNote(7, "seven") +
        R"({"note":3,"items":{"Form":"qbEvent"}})"
        "\n" +
        R"({"note":4,"items":{"Form":"other"}})"
        "\n" +
        R"({"note":9,"items":{"Form":"qbEvent","category_text":5}})"
        "\n");
  EXPECT_EQ(linesOf(documents::showEvents),
            (std::vector<std::string>{
                "Testing Get VRX events:", " [] ", "2012-05-30 14:07:00 [C] seven",
                "Now [Insert Error] NsfNote Error: Invalid item-type \"category_text\" : Item is "
                "not type Text.",
                "Done Testing Get VRX events."}));
}

TEST_F(Documents, EachFailedCallOfAListingShowsAsItsChain) {
  const std::u16string insert = u"Now [Insert Error] ";
  const std::u16string all = u"Error Testing Get VRX events: ";
  const struct {
    const char* operation;
    int number;
    std::u16string events, updates;
  } rows[] = {
      {"NSFDbOpen", 1, all + u"NsfDbConnection Error: " + openFailure,
       u"Could not open or close database connection:  " + openFailure},
      {"NSFDbOpen", 2, all + u"Formula Error: " + openFailure,
       u"Could not complete formula search:  " + openFailure},
      {"NSFFormulaCompile", 1, all + u"Formula Error: Could not compile searchFormula: " + unknown,
       u"Could not complete formula search:  Could not compile searchFormula: " + unknown},
      {"NSFSearch", 1, all + u"Formula Error: Search failed" + unknown,
       u"Could not complete formula search:  Search failed" + unknown},
      {"NSFDbClose", 1, all + u"Formula Error: " + closeFailure,
       u"Could not complete formula search:  " + closeFailure},
      {"NSFDbOpen", 3, insert + u"NsfDbConnection Error: " + openFailure,
       u"Could not load updateitem:  " + openFailure},
      {"NSFNoteOpen", 1, insert + u"NoteHandle Error: Could not open note: " + unknown,
       u"Could not load updateitem:  Could not open note: " + unknown},
      {"NSFItemInfo", 2, insert + u"NsfNote Error: Item \"category_text\" is not present in Note.",
       u"Could not load updateitem:  Item \"install_item\" is not present in Note."},
      {"NSFItemConvertToText", 1,
       insert + u"NsfNote Error: Item \"reported\" is not present in Note.",
       u"Could not load updateitem:  Item \"installed_date\" is not present in Note."},
      {"NSFNoteClose", 1, insert + u"NoteHandle Error: Could not close note: " + unknown,
       u"Could not load updateitem:  Could not close note: " + unknown},
      {"NSFDbClose", 2, insert + u"NsfDbConnection Error: " + closeFailure,
       u"Could not load updateitem:  " + closeFailure},
      {"NSFDbClose", 3, all + u"NsfDbConnection Error: " + closeFailure,
       u"Could not open or close database connection:  " + closeFailure},
  };
  start(
      eventNote(1, "e") +
      R"({"note":2,"items":{"Form":"qbinstallationupdatenote","install_item":"I","installed_date":{"time":"2012-05-30T14:07:00Z"}}})"
      "\n");
  for (const auto& row : rows) {
    fail(row.operation, row.number);
    EXPECT_EQ(linesOf(documents::showEvents),
              (std::vector<std::string>{"Testing Get VRX events:", narrow(row.events),
                                        "Done Testing Get VRX events."}))
        << row.operation << row.number;
    fail(row.operation, row.number);
    EXPECT_EQ(linesOf(documents::showInstalledUpdates),
              (std::vector<std::string>{"SEARCHING FOR INSTALLED UPDATES...", narrow(row.updates)}))
        << row.operation << row.number;
  }
}

TEST_F(Documents, ListingOpensTheDatabaseOnceForEachNoteAndTwiceMore) {
  std::string notes;
  for (int id = 1; id <= 5; ++id) notes += eventNote(id, "e");
  start(notes);
  linesOf(documents::showEvents);
  EXPECT_EQ(recorder().counts["NSFDbOpen"], 7);
  EXPECT_EQ(recorder().counts["NSFDbClose"], 7);
  EXPECT_EQ(recorder().counts["NSFNoteClose"], 5);
  EXPECT_EQ(recorder().counts["OSMemFree"], 0) << "the formula stays with the library";
}

TEST_F(Documents, UpdatesAreShownWholeOrNotAtAll) {
  const std::string update =
      R"("items":{"Form":"qbinstallationupdatenote","installed_on_server":"S","update_version":"1.2"}})"
      "\n";
  start("");
  const std::string searching = "SEARCHING FOR INSTALLED UPDATES...";
  EXPECT_EQ(linesOf(documents::showInstalledUpdates),
            (std::vector<std::string>{searching, "INSTALLED UPDATES:"}));
  writeDatabase("QBConf.nsf", "{\"note\":1," + update);
  EXPECT_EQ(linesOf(documents::showInstalledUpdates),
            (std::vector<std::string>{searching, "INSTALLED UPDATES:", "\t\t\t\t\tS",
                                      "\t\t\t\t\t\tDate:\t\t", "\t\t\t\t\t\tItem:\t\t",
                                      "\t\t\t\t\t\tVersion:\t1.2"}));
  writeDatabase("QBConf.nsf",
                "{\"note\":1," + update +
                    R"({"note":2,"items":{"Form":"qbinstallationupdatenote","installed_date":"x"}})"
                    "\n");
  EXPECT_EQ(linesOf(documents::showInstalledUpdates),
            (std::vector<std::string>{searching,
                                      "Could not load updateitem:  Item \"installed_date\" is not "
                                      "type Time."}));
}

TEST_F(Documents, ThreeEventsAreWrittenWithTheTextsOfTheLanguageNote) {
  start(
      R"({"note":1,"profile":"qblanguage","items":{"vrxqbevent":["nab_import=A=b","x","nab_import=second","user_sync=","Software_update=no"]}})"
      "\n");
  const std::string before = database();
  EXPECT_EQ(linesOf(documents::createTestEvents),
            (std::vector<std::string>{"Creating quellbright test events.",
                                      "Done creating quellbright test events."}));
  EXPECT_EQ(database().substr(0, before.size()), before);
  std::vector<std::string> lines = linesOf(documents::showEvents);
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_EQ(lines[1].substr(19), " [A=b] This is a testmessage in the NABImport-category.");
  EXPECT_EQ(lines[2].substr(19),
            " [Software Updates] This is a testmessage in the softwareupdate-category.");
  EXPECT_EQ(lines[3].substr(19),
            " [User Synchronization] This is a testmessage in the Usersync-category.");
  const std::string written = database().substr(before.size());
  EXPECT_NE(written.find(R"("items":{"Form":"qbEvent","Subject":"Quellbright Event","reported":{)"),
            std::string::npos)
      << written;
  EXPECT_NE(written.find("\"Server\":\"mail\",\"category\":3"), std::string::npos) << written;
}

TEST_F(Documents, EachFailedCallOfAWriteEndsTheSectionWithItsChain) {
  const std::u16string handle = u"Could not open or close notehandle: ";
  const struct {
    const char* operation;
    int number;
    std::u16string expected;
  } rows[] = {
      {"NSFDbOpen", 1, u"DBconecction failed: " + openFailure},
      {"NSFNoteCreate", 1, u"NsfNoteCreate failed with error: " + unknown},
      {"NSFItemSetText", 1, u"NsfNoteError: " + unknown},
      {"NSFItemSetTime", 1, u"NsfNoteError: " + unknown},
      {"NSFItemSetNumber", 1, u"NsfNoteError: " + unknown},
      {"NSFItemSetText", 5, u"NsfNoteError: " + unknown},
      {"NSFNoteUpdate", 1, handle + u"Coule not update note" + unknown},
      // The first note that closes is that of the language texts.
      {"NSFNoteClose", 2, handle + u"Could not close note: " + unknown},
      {"NSFDbClose", 2, u"DBconecction failed: " + closeFailure},
  };
  start("");
  for (const auto& row : rows) {
    fail(row.operation, row.number);
    EXPECT_EQ(linesOf(documents::createTestEvents),
              (std::vector<std::string>{"Creating quellbright test events.",
                                        narrow(u"Create event error: " + row.expected),
                                        "Done creating quellbright test events."}))
        << row.operation << row.number;
  }
  // Without its language text an event has the category's own.
  for (const char* operation : {"NSFProfileOpen", "NSFDbOpen", "NSFNoteClose", "NSFDbClose"}) {
    fail(operation, operation == std::string("NSFDbOpen") ? 2 : 1);
    EXPECT_EQ(linesOf(documents::createTestEvents).size(), 2U) << operation;
  }
  // A language note that cannot be read as a note is no reason to go without the text.
  writeDatabase("QBConf.nsf",
                R"({"note":1,"profile":"qblanguage","items":{"vrxqbevent":"nab_import=x"}})"
                "\n");
  fail("NSFItemInfo", 9);
  EXPECT_EQ(linesOf(documents::createTestEvents)[1],
            "Create event error: NsfNoteError: Item \"vrxqbevent\" is not present: Item is not "
            "present in Note.");
}

TEST_F(Documents, EachFailedLookUpOfALanguageTextHasItsMessage) {
  start(R"({"note":1,"profile":"qblanguage","items":{"s":["k=v"],"n":1,"t":"k=w"}})"
        "\n");
  const auto look = [](const std::string& section) -> std::u16string {
    try {
      return QuellbrightTranslation::translate(section, u"k", u"fallback");
    } catch (const QuellbrightTranslation::QuellbrightTranslationError& error) {
      return u"error: " + error.message();
    }
  };
  EXPECT_EQ(look("s"), u"v");
  EXPECT_EQ(look("t"), u"w");
  EXPECT_EQ(look("missing"), u"fallback");
  EXPECT_EQ(look("n"), u"error: Nsf Note error: Item \"n\" is not type TextList (or Text)");
  const struct {
    const char* operation;
    int number;
    std::u16string expected;
  } rows[] = {
      {"NSFDbOpen", 1, u"DbConnection error: " + openFailure},
      {"NSFProfileOpen", 1, u"ProfileNote errorCould not open profile: " + unknown},
      {"NSFItemInfo", 2, u"Could not find section: Item \"s\" is not present in Note."},
      {"NSFItemInfo", 5, u"Could not find section: Item is not present in Note."},
      {"NSFNoteClose", 1, u"ProfileNote errorCould not close profile: " + unknown},
      {"NSFDbClose", 1, u"DbConnection error: " + closeFailure},
  };
  for (const auto& row : rows) {
    fail(row.operation, row.number);
    EXPECT_EQ(look("s"), u"error: " + row.expected) << row.operation << row.number;
    if (row.operation == std::string("NSFDbClose")) {
      EXPECT_EQ(recorder().counts["NSFDbClose"], 2) << "a failed close is tried once more";
    }
  }
}

TEST_F(Documents, SearchKeepsItsMatchesAndStopsAtTheFailureOfItsVisitor) {
  start(eventNote(1, "a") + eventNote(2, "b") + eventNote(5, "c"));
  notes::FormulaSearch search("QBConf.nsf", "SELECT Form=\"qbEvent\"");
  search.search();
  search.search();
  ASSERT_EQ(search.count(), 6U);
  EXPECT_EQ(search.noteId(2), 5U);
  EXPECT_EQ(search.noteId(3), 1U);
  EXPECT_THROW(static_cast<void>(search.noteId(6)), std::out_of_range);
  notes::FormulaSearch wrong("QBConf.nsf", "SELECT (");
  EXPECT_THROW(wrong.search(), notes::FormulaSearch::FormulaSearchError);

  const notes::NsfDbConnection connection("QBConf.nsf");
  FORMULAHANDLE formula = 0;
  ASSERT_EQ(notes::compileFormula("SELECT @All", formula), 0);
  int visits = 0;
  EXPECT_THROW(notes::searchNotes(connection.handle(), formula, nullptr,
                                  [&visits](NOTEID id) {
                                    if (++visits == 2) throw std::range_error(std::to_string(id));
                                  }),
               std::range_error);
  EXPECT_EQ(visits, 2);
}

}  // namespace
