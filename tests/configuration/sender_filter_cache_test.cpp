#include "configuration/sender_filter_cache.h"

#include "support/notes_server.h"

namespace {

using configuration::SenderFilterCache;

using test::closeFailure;
using test::openFailure;
using test::unknown;

class SenderFilter : public test::NotesServer {
 protected:
  static std::string filters(const std::vector<std::string>& notes) {
    std::string lines;
    int id = 0;
    for (const std::string& items : notes) {
      lines += "{\"note\":" + std::to_string(++id) + ",\"items\":{\"Form\":\"QBSenderFilter\"," +
               items + "}}\n";
    }
    return lines;
  }

  static std::string entry(const std::string& action, const std::string& colour,
                           const std::string& key) {
    return "\"filter_email_or_domain\":" + action + ",\"filter_black_or_white\":" + colour + "," +
           key;
  }

  // What is printed, or the message of the failure; and then the load errors.
  static std::u16string loaded() {
    SenderFilterCache cache(60);
    bool reloaded = false;
    std::u16string text;
    try {
      cache.refresh(reloaded);
      cache.print(text, 1);
    } catch (const SenderFilterCache::SenderFilterCacheError& error) {
      text = u"error: " + error.message();
    }
    EXPECT_EQ(cache.hasErrors(), !cache.loadErrors().empty());
    for (const std::u16string& error : cache.loadErrors()) text += u"|" + error;
    return text;
  }
};

TEST_F(SenderFilter, EntriesAreShownInOrderAndUselessNotesAreRecorded) {
  const std::u16string title = u"SENDERFILTER CACHE";
  const struct {
    std::string notes;
    std::u16string expected;
  } table[] = {
      {"", u""},
      {R"({"note":1,"items":{"Form":"other","filter_email":"a"}})"
       "\n",
       u""},
      {filters({entry("1", "1", R"("filter_email":"b@x")"),
                entry("2", "2", R"("filter_domain":"B")"),
                entry("2", "2", R"("filter_domain":"é")")}),
       u"\n\tB:White\n\tb@x:Black\n\t\u00c3\u00a9:White"},
      // The later of two with one key counts.
      {filters(
           {entry("1", "1", R"("filter_email":"b")"), entry("2", "2", R"("filter_domain":"b")")}),
       u"\n\tb:White"},
      {filters({R"("original_input":"in","filter_email":"b")"}),
       u"|Invalid item (in). Action(Filter action: Not set.), FilterColor(Filter color: Not set.)"},
      {filters({entry("2", "2", R"("filter_email":"b")")}),
       u"|Invalid item (). Action(Filter action: By domain.), FilterColor(Filter color: White.)"},
      {filters({entry("1", "1", R"("filter_email":"")")}),
       u"|Invalid item (). Action(Filter action: By email.), FilterColor(Filter color: Black.)"},
      {filters({entry("1.5", "3", R"("filter_email":"b")")}),
       u"|Invalid item (). Action(Filter action: ), FilterColor(Filter color: )"},
      {filters({entry("1", "3", R"("filter_email":"b")")}), u""},
      {filters({entry(R"("1")", "1", R"("filter_email":"b")"),
                entry("1", "1", R"("filter_email":"c")")}),
       u"\n\tc:Black|NsfNote-error: Item is not type Number."},
      {filters({entry("1", "1", R"("filter_email":["b"])")}),
       u"|NsfNote-error: Invalid item-type \"filter_email\" : Item is not type Text."},
  };
  start("");
  for (const auto& [notes, expected] : table) {
    writeDatabase("QBConf.nsf", notes);
    EXPECT_EQ(loaded(), title + expected) << notes;
  }
}

TEST_F(SenderFilter, EachFailedCallShowsAsItsChainOrIsRecorded) {
  const std::u16string title = u"SENDERFILTER CACHE";
  const std::u16string search = u"error: Could not complete search: ";
  const std::u16string connection =
      u"error: Could not complete search - could not open or close database-connection: ";
  const struct {
    const char* operation;
    int number;
    std::u16string expected;
  } table[] = {
      {"NSFDbOpen", 1, connection + openFailure},
      {"NSFFormulaCompile", 1, search + u"Could not compile searchFormula: " + unknown},
      {"NSFSearch", 1, search + u"Search failed" + unknown},
      {"NSFDbOpen", 2, title + u"|DbConnection error: " + openFailure},
      {"NSFNoteOpen", 1, title + u"|Domino API-error: Could not open note" + unknown},
      {"NSFItemInfo", 3,
       title + u"|NsfNote-error: Item \"filter_email_or_domain\" is not present in Note."},
      {"NSFNoteClose", 1, title + u"\n\tb:Black|Domino API-error: Could not close note" + unknown},
      {"NSFDbClose", 1, title + u"\n\tb:Black|DbConnection error: " + closeFailure},
      {"NSFDbClose", 2, connection + closeFailure},
  };
  start(filters({entry("1", "1", R"("filter_email":"b")")}));
  for (const auto& row : table) {
    fail(row.operation, row.number);
    EXPECT_EQ(loaded(), row.expected) << row.operation << row.number;
    if (row.operation == std::string("NSFItemInfo")) {
      EXPECT_EQ(recorder().counts["NSFNoteClose"], 1) << "read or not, the note is closed";
    }
    EXPECT_EQ(recorder().counts["OSMemFree"], 0) << "the formula stays with the library";
  }
}

TEST_F(SenderFilter, RefreshLoadsOnceInItsInterval) {
  start(filters({entry("1", "1", R"("filter_email":"b")")}));
  SenderFilterCache cache(60);
  const struct {
    std::int64_t now;
    bool expected;
  } table[] = {{59, false}, {60, true}, {119, false}, {120, true}};
  for (const auto& [now, expected] : table) {
    bool reloaded = !expected;
    cache.refresh(reloaded, now);
    EXPECT_EQ(reloaded, expected) << now;
  }
}

}  // namespace
