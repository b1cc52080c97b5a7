#include "documents/event_store.h"
#include "documents/event_steps.h"

#include <regex>

#include "support/notes_server.h"

namespace {

class Events : public test::NotesServer {
 protected:
  static std::string line(const std::string& id, const std::string& category,
                          const std::string& event) {
    return "{\"note\":" + id +
           R"(,"items":{"Form":"qbEvent","Subject":"Quellbright Event","reported":{<now>},)"
           R"("Server":"mail","category":)" +
           category + ",\"event\":\"This is a testmessage in the " + event + "-category.\"}}\n";
  }
};

// The list of events shows neither the server nor the number.
TEST_F(Events, AreWrittenWithAllTheirItemsAndNothingElseIs) {
  start(R"({"note":1,"profile":"qblanguage","items":{"vrxqbevent":["user_sync=Abgleich"]}})"
        "\n");
  const std::string before = database();
  base::ReportLog report(folder_.wide(), u"R", u".log", u"N", u"%H", base::ordinaryLevel, false);
  documents::createTestEvents(report, false);
  const std::regex time("\"time\":\"[^\"]*\"");
  EXPECT_EQ(std::regex_replace(database(), time, "<now>"),
            before + line("2", R"(3.0,"category_text":"User Import")", "NABImport") +
                line("3", R"(5.0,"category_text":"Software Updates")", "softwareupdate") +
                line("4", R"(4.0,"category_text":"Abgleich")", "Usersync"));
}

}  // namespace
