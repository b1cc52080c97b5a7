#include "notes/nsf_note.h"

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

  // The message with which a read or write fails, behind the name of its class.
  template <typename Action>
  static std::u16string failureOf(Action action) {
    try {
      action();
    } catch (const NsfNote::NsfNoteInvalidItemType& error) {
      return u"type: " + error.message();
    } catch (const NsfNote::NsfNoteItemNotPresent& error) {
      return u"absent: " + error.message();
    } catch (const NsfNote::NsfNoteError& error) {
      return u"note: " + error.message();
    } catch (const NsfNote::DominoApiError& error) {
      return u"api: " + error.message();
    } catch (const NoteHandle::NoteHandleError& error) {
      return u"handle: " + error.message();
    } catch (const NsfDbConnection::DbConnectionError& error) {
      return u"connection: " + error.message();
    }
    return u"none";
  }
};

TEST_F(Notes, ItemsAreReadByTheirType) {
  const NsfDbConnection connection("QBConf.nsf");
  const NoteHandle handle(connection, 1);
  const NsfNote note(handle.handle());
  EXPECT_EQ(note.getText("TEXT"), u"t");
  EXPECT_EQ(note.getText("bytes"), u"c\u00e9");
  EXPECT_EQ(note.getTextOrEmpty("missing"), u"");
  EXPECT_EQ(note.getNumber("number"), 4.5);
  EXPECT_EQ(DWORD{note.getTime("time").Innards[1]}, 2456078U);
  EXPECT_EQ(note.getTimeText("time"), "2012-05-30 14:07:00");
  EXPECT_EQ(note.getTimeTextOrEmpty("missing"), "");
  std::vector<std::u16string> texts = {u"kept"};
  note.getTextList("list", texts, false);
  note.getTextList("text", texts, false);
  note.getTextList("none", texts, false);
  EXPECT_EQ(texts, (std::vector<std::u16string>{u"kept", u"a", u"", u"b", u"t"}));
  note.getTextList("text", texts, true);
  EXPECT_EQ(texts, std::vector<std::u16string>{u"t"});
  const struct {
    const char* item;
    bool hasValue;
  } rows[] = {{"text", true}, {"empty", false}, {"number", true},
              {"list", true}, {"none", true},   {"missing", false}};
  for (const auto& row : rows) EXPECT_EQ(note.hasValue(row.item), row.hasValue) << row.item;
}

TEST_F(Notes, WrongTypesAndAbsentItemsAreToldInEachReadersOwnWords) {
  const NsfDbConnection connection("QBConf.nsf");
  const NoteHandle handle(connection, 1);
  const NsfNote note(handle.handle());
  std::vector<std::u16string> texts;
  const std::u16string absent = u"absent: Item is not present in Note.";
  EXPECT_EQ(failureOf([&] { note.getText("number"); }),
            u"note: Invalid item-type \"number\" : Item is not type Text.");
  EXPECT_EQ(failureOf([&] { note.getText("x"); }),
            u"note: Item \"x\" is not present: Item is not present in Note.");
  EXPECT_EQ(failureOf([&] { note.getTextList("time", texts, true); }),
            u"type: Item \"time\" is not type TextList (or Text)");
  EXPECT_EQ(failureOf([&] { note.getTextList("x", texts, true); }), absent);
  EXPECT_EQ(failureOf([&] { note.getNumber("text"); }), u"type: Item is not type Number.");
  EXPECT_EQ(failureOf([&] { note.getNumber("x"); }), absent);
  EXPECT_EQ(failureOf([&] { note.getTime("text"); }), u"type: Item \"text\" is not type Time.");
  EXPECT_EQ(failureOf([&] { note.getTimeText("text"); }), u"type: Item \"text\" is not type Time.");
  EXPECT_EQ(failureOf([&] { note.isText("x"); }), absent);
  EXPECT_EQ(failureOf([&] { note.valueLength("x"); }),
            u"absent: Item \"x\" is not present in Note.");
}

TEST_F(Notes, EachFailedCallIsTold) {
  const std::u16string unknown = u"Unknown status 0x2BAD";
  const NsfDbConnection connection("QBConf.nsf");
  const struct {
    const char* operation;
    int number;
    std::u16string expected;
    std::function<void(NsfNote&)> action;
  } rows[] = {
      {"NSFItemGetNumber", 1, u"absent: Item \"number\" is not present in Note.",
       [](NsfNote& note) { note.getNumber("number"); }},
      {"NSFItemGetTime", 1, u"absent: Item \"time\" is not present in Note.",
       [](NsfNote& note) { note.getTime("time"); }},
      {"NSFItemConvertToText", 1, u"absent: Item \"time\" is not present in Note.",
       [](NsfNote& note) { note.getTimeText("time"); }},
      {"NSFItemInfo", 2, u"absent: Item \"text\" is not present in Note.",
       [](NsfNote& note) { note.isText("text"); }},
      {"NSFItemInfo", 2, u"absent: Item \"text\" is not present in Note.",
       [](NsfNote& note) { note.valueLength("text"); }},
      {"NSFItemSetText", 1, u"api: " + unknown, [](NsfNote& note) { note.setText("a", u"b"); }},
      {"NSFItemSetNumber", 1, u"api: " + unknown, [](NsfNote& note) { note.setNumber("a", 1); }},
      {"NSFItemSetTime", 1, u"api: " + unknown, [](NsfNote& note) { note.setTimeNow("a"); }},
  };
  for (const auto& row : rows) {
    fail(row.operation, row.number);
    const NoteHandle handle(connection, 1);
    NsfNote note(handle.handle());
    EXPECT_EQ(failureOf([&] { row.action(note); }), row.expected) << row.operation;
  }
}

TEST_F(Notes, TextIsWrittenAsUtf8AndReadByteByByteUpToTheBuffer) {
  NsfDbConnection connection("QBConf.nsf");
  {
    NoteHandle handle(connection, 1);
    NsfNote note(handle.handle());
    note.setText("text", u"\u00e9");
    note.setText("long", std::u16string(1100, u'x'));
    handle.update();
  }
  const NoteHandle handle(connection, 1);
  const NsfNote note(handle.handle());
  EXPECT_EQ(note.getText("text"), u"\u00c3\u00a9");
  EXPECT_EQ(note.getText("long"), std::u16string(1023, u'x'));
  EXPECT_EQ(note.valueLength("long"), 1100U);
}

TEST_F(Notes, FailedCloseIsRaisedUnlessAnotherFailureIsOnItsWay) {
  const std::u16string unknown = u"Unknown status 0x2BAD";
  const std::u16string close =
      u"connection: Could not close connection to the database: " + unknown + u".";
  fail("NSFDbClose", 0);
  EXPECT_EQ(failureOf([] { const NsfDbConnection connection("QBConf.nsf"); }), close);
  EXPECT_EQ(failureOf([] {
              const NsfDbConnection connection("QBConf.nsf");
              const NoteHandle handle(connection, 99);
            }).substr(0, 29),
            u"handle: Could not open note: ");
  fail("NSFNoteClose", 1);
  EXPECT_EQ(failureOf([] {
              const NsfDbConnection connection("QBConf.nsf");
              const NoteHandle handle(connection, 1);
            }),
            u"handle: Could not close note: " + unknown);
  fail("NSFDbClose", 1);
  NsfDbConnection connection("QBConf.nsf");
  EXPECT_EQ(failureOf([&] { connection.close(); }), close);
  EXPECT_NE(connection.handle(), 0U) << "it still counts as open";
  connection.close();
  connection.close();
  EXPECT_EQ(recorder().counts["NSFDbClose"], 2);
  EXPECT_EQ(failureOf([&] { static_cast<void>(connection.handle()); }),
            u"connection: Database-connection is closed.");
}

}  // namespace
