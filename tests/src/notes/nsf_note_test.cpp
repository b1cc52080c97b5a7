#include "notes/nsf_note.h"

#include <cstring>

#include "notes/domino_api_tools.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"
#include "support/notes_server.h"

namespace {

using notes::NoteHandle;
using notes::NsfDbConnection;
using notes::NsfNote;

class Notes : public test::NotesServer {
 protected:
  void SetUp() override {
    start(R"({"note":1,"items":{"text":"t","empty":"","number":4.5,"list":["a","","b"],"none":[],)"
          R"("time":{"time":"2012-05-30T14:07:00.25Z"},"bytes":{"bytes":"63e9"}}})"
          "\n");
  }

  template <typename Action>
  static std::u16string failureOf(Action action) {
    try {
      action();
    } catch (const base::Error& error) {
      return error.message();
    }
    return u"none";
  }
};

TEST_F(Notes, ItemsAreReadByTheirTypeAndUpToTheBuffer) {
  const NsfDbConnection connection("QBConf.nsf");
  const NoteHandle handle(connection, 1);
  NsfNote note(handle.handle());
  EXPECT_EQ(note.getText("TEXT"), u"t");
  EXPECT_EQ(note.getText("bytes"), u"c\u00e9");
  EXPECT_EQ(note.getTextOrEmpty("missing"), u"");
  EXPECT_EQ(note.getNumber("number"), 4.5);
  EXPECT_EQ(DWORD{note.getTime("time").Innards[1]}, 2456078U);
  EXPECT_EQ(note.getTimeText("time"), "2012-05-30 14:07:00");
  EXPECT_EQ(note.getTimeTextOrEmpty("missing"), "");
  std::vector<std::u16string> texts = {u"kept"};
  for (const char* item : {"list", "text", "none"}) note.getTextList(item, texts, false);
  EXPECT_EQ(texts, (std::vector<std::u16string>{u"kept", u"a", u"", u"b", u"t"}));
  note.getTextList("text", texts, true);
  EXPECT_EQ(texts, std::vector<std::u16string>{u"t"});
  for (const char* item : {"text", "number", "list", "none"}) EXPECT_TRUE(note.hasValue(item));
  for (const char* item : {"empty", "missing"}) EXPECT_FALSE(note.hasValue(item));
  EXPECT_EQ(notes::DominoApiTools::replicaId(connection.handle()), u"001234560000ABCD");
  note.setText("text", u"\u00e9");
  EXPECT_EQ(note.getText("text"), u"\u00c3\u00a9") << "written as UTF-8 and read byte by byte";
  note.setText("long", std::u16string(1100, u'x'));
  EXPECT_EQ(note.getText("long"), std::u16string(1023, u'x'));
  EXPECT_EQ(note.valueLength("long"), 1100U);
}

TEST_F(Notes, WrongTypesAndAbsentItemsAreToldInEachReadersOwnWords) {
  const NsfDbConnection connection("QBConf.nsf");
  const NoteHandle handle(connection, 1);
  const NsfNote note(handle.handle());
  std::vector<std::u16string> texts;
  const std::u16string absent = u"Item is not present in Note.";
  EXPECT_EQ(failureOf([&] { note.getText("number"); }),
            u"Invalid item-type \"number\" : Item is not type Text.");
  EXPECT_EQ(failureOf([&] { note.getText("x"); }), u"Item \"x\" is not present: " + absent);
  EXPECT_EQ(failureOf([&] { note.getTextList("time", texts, true); }),
            u"Item \"time\" is not type TextList (or Text)");
  EXPECT_EQ(failureOf([&] { note.getNumber("text"); }), u"Item is not type Number.");
  EXPECT_EQ(failureOf([&] { note.getTime("text"); }), u"Item \"text\" is not type Time.");
  EXPECT_EQ(failureOf([&] { note.getTimeText("text"); }), u"Item \"text\" is not type Time.");
  EXPECT_EQ(failureOf([&] { note.isText("x"); }), absent);
  EXPECT_EQ(failureOf([&] { note.valueLength("x"); }), u"Item \"x\" is not present in Note.");
}

TEST_F(Notes, TimeIsReadAsYearMonthDayWhateverTheServersSettings) {
  const auto own = notes::api.OSGetIntlSettings;
  notes::api.OSGetIntlSettings = [](INTLFORMAT* settings, WORD size) {
    std::memset(settings, 'x', size);
  };
  TIMEDATE time{};
  notes::DominoApiTools::timeDateFromText("2012-05-30 14:07:00", time);
  EXPECT_EQ(DWORD{time.Innards[1]}, 2456078U);
  EXPECT_EQ(DWORD{time.Innards[0]}, (14U * 60 + 7) * 60 * 100);
  fail("ConvertTextToTIMEDATE", 1);
  EXPECT_EQ(failureOf([&] { notes::DominoApiTools::timeDateFromText("soon", time); }),
            u"Could not create TIMEDATE: " + test::unknown);
  notes::api.OSGetIntlSettings = own;
}

TEST_F(Notes, ConnectionThatDidNotCloseStaysOpenAndIsClosedOnce) {
  fail("NSFDbClose", 1);
  NsfDbConnection connection("QBConf.nsf");
  EXPECT_EQ(failureOf([&] { connection.close(); }), test::closeFailure);
  EXPECT_NE(connection.handle(), 0U) << "it still counts as open";
  connection.close();
  connection.close();
  EXPECT_EQ(recorder().counts["NSFDbClose"], 2);
  EXPECT_EQ(failureOf([&] { static_cast<void>(connection.handle()); }),
            u"Database-connection is closed.");
}

}  // namespace
