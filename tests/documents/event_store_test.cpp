#include "documents/event_store.h"

#include "support/notes_server.h"

namespace {

using documents::EventCategory;

class Events : public test::NotesServer {};

// The list of events shows neither the server nor the number.
TEST_F(Events, AreWrittenWithAllTheirItems) {
  start(R"({"note":1,"profile":"qblanguage","items":{"vrxqbevent":["user_sync=Abgleich"]}})"
        "\n");
  const std::tuple<EventCategory, std::string> table[] = {
      {EventCategory::nabImport, R"("category":3.0,"category_text":"User Import")"},
      {EventCategory::userSync, R"("category":4.0,"category_text":"Abgleich")"},
      {EventCategory::softwareUpdate, R"("category":5.0,"category_text":"Software Updates")"},
  };
  std::string expected = database();
  for (const auto& [category, items] : table) {
    documents::createEvent(u"mail", category, u"caf\u00e9");
    std::string written = database().substr(expected.size());
    const std::size_t time = written.find("\"time\":\"") + 8;
    written.erase(time, written.find('"', time) - time);
    EXPECT_EQ(written.substr(written.find("\"items\"")),
              R"("items":{"Form":"qbEvent","Subject":"Quellbright Event","reported":{"time":""},)"
              R"("Server":"mail",)" +
                  items + ",\"event\":\"café\"}}\n");
    expected = database();
  }
}

}  // namespace
