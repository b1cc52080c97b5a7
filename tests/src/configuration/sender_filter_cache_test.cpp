#include "configuration/sender_filter_cache.h"

#include "support/notes_server.h"
#include "support/rows.h"

namespace {

using configuration::SenderFilterCache;

const std::string file = "src/configuration/sender_filter_errors.txt";

class SenderFilter : public test::NotesServer {
 protected:
  // A filter with these items.
  void write(const std::string& items) const {
    writeDatabase("QBConf.nsf",
                  "{\"note\":1,\"items\":{\"Form\":\"qbSenderFilter\"," + items + "}}\n");
  }

  static std::u16string printed(const SenderFilterCache& cache) {
    std::u16string text;
    cache.print(text, 0);
    return text;
  }

  const std::string good =
      R"("filter_email_or_domain":1,"filter_black_or_white":1,"filter_email":"b")";
};

TEST_F(SenderFilter, LoadIsDueBySecondsAndForgetsTheEntriesAndErrorsBefore) {
  start("");
  SenderFilterCache cache(60);
  const struct {
    std::int64_t now;
    std::string items;
    bool reloaded;
    std::u16string printed;
    std::size_t errors;
  } table[] = {
      {59, good, false, u"SENDERFILTER CACHE", 0},
      {60, good, true, u"SENDERFILTER CACHE\nb:Black", 0},
      {119, "\"none\":1", false, u"SENDERFILTER CACHE\nb:Black", 0},
      {120, "\"none\":1", true, u"SENDERFILTER CACHE", 1},
      {180, "\"none\":1", true, u"SENDERFILTER CACHE", 1},
      {240, good, true, u"SENDERFILTER CACHE\nb:Black", 0},
  };
  for (const auto& row : table) {
    write(row.items);
    bool reloaded = !row.reloaded;
    cache.refresh(reloaded, row.now);
    EXPECT_EQ(reloaded, row.reloaded) << row.now;
    EXPECT_EQ(printed(cache), row.printed) << row.now;
    EXPECT_EQ(cache.loadErrors().size(), row.errors) << row.now;
    EXPECT_EQ(cache.hasErrors(), row.errors != 0) << row.now;
  }
}

TEST_F(SenderFilter, NoteThatIsOfNoUseOrFailsIsRecorded) {
  start("");
  for (const auto& [where, fields] : test::rowsOf(file, 3)) {
    write(fields[1] == "good" ? good : fields[1]);
    const std::size_t blank = fields[0].find(' ');
    fail(fields[0].substr(0, blank), fields[0] == "-" ? -1 : std::stoi(fields[0].substr(blank)));
    SenderFilterCache cache(60);
    bool reloaded = false;
    cache.refresh(reloaded);
    EXPECT_EQ(cache.loadErrors(), std::vector<std::u16string>{test::wide(fields[2])}) << where;
  }
}

}  // namespace
