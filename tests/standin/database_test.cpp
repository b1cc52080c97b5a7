// Paths, profiles and searches.
#include <gtest/gtest.h>

#include <functional>

#include "server.h"
#include "support/rows.h"

namespace standin_tests {
namespace {

TEST(Database, PathsLeadToTheFile) {
  const Server server(header + noteLine(1), "ServerName=Mail/Acme");
  std::filesystem::create_directory("sub");
  test::writeFile("sub/b.nsf", header + noteLine(2));
  for (const auto& [where, row] : test::rowsOf("standin/database_paths.txt", 2)) {
    std::string path = row[0];
    if (path.starts_with("<here>")) path.replace(0, 6, std::filesystem::current_path().string());
    EXPECT_EQ(foundIn(path), row[1]) << where;
  }
  DBHANDLE db = 0;
  TIMEDATE changed{};
  EXPECT_EQ(NSFDbOpenExtended("a.nsf", 0, 0, nullptr, &db, nullptr, &changed), 0);
  EXPECT_GT(DWORD{changed.Innards[1]}, 2440588U);
  EXPECT_EQ(found(db), "1");
}

TEST(Database, TitleIsCutAndReplicaIdHasItsHighWordInFront) {
  const std::string title = "Quellbright \xC3\xA9 " + std::string(200, 't');
  const Server server(R"({"database":{"title":")" + title + R"(","replica":"001234560000abCD"}})");
  const DBHANDLE db = openDatabase();
  DBREPLICAINFO replica{};
  EXPECT_EQ(NSFDbReplicaInfoGet(db, &replica), 0);
  EXPECT_EQ(DWORD{replica.ID.Innards[1]}, 0x123456U);
  EXPECT_EQ(DWORD{replica.ID.Innards[0]}, 0xABCDU);
  std::string info(NOTES_DBINFO_SIZE + 1, '#');
  std::string text(NOTES_TITLE_SIZE + 1, '#');
  EXPECT_EQ(NSFDbInfoGet(db, info.data()), 0);
  EXPECT_EQ(info, title.substr(0, 127) + '\0' + '#');
  NSFDbInfoParse(info.data(), INFOPARSE_TITLE, text.data(), NOTES_TITLE_SIZE);
  EXPECT_EQ(text, title.substr(0, 126) + '\0' + '#');
  NSFDbInfoParse(info.data(), INFOPARSE_TITLE + 1, text.data(), NOTES_TITLE_SIZE);
  EXPECT_EQ(text[0], '\0');
}

NOTEHANDLE openProfile(DBHANDLE db, const std::string& profile, const std::string& user = "") {
  NOTEHANDLE note = 0;
  const STATUS status = NSFProfileOpen(db, profile.data(), static_cast<WORD>(profile.size()),
                                       user.empty() ? nullptr : user.data(),
                                       static_cast<WORD>(user.size()), 1, &note);
  EXPECT_EQ(wordsOf(status), noError);
  return note;
}

TEST(Profile, ReachesTheFileOnlyByItsOwnUpdate) {
  const Server server;
  const DBHANDLE db = openDatabase();
  const NOTEHANDLE note = openProfile(db, "Customer");
  EXPECT_EQ(setText(note, "name", "Nordholm"), 0);
  EXPECT_EQ(wordsOf(NSFNoteUpdate(note, 0)),
            "A profile note is written only by the operation for profiles");
  const NOTEHANDLE rival = openProfile(db, "customer");
  EXPECT_EQ(textOf(rival, "name"), "");
  EXPECT_EQ(setText(rival, "name", "Rival"), 0);
  EXPECT_EQ(test::contentOf("a.nsf"), header);

  EXPECT_EQ(NSFProfileUpdate(note, "Customer", 8, nullptr, 0), 0);
  EXPECT_EQ(write(db, "document"), noError);
  EXPECT_EQ(NSFProfileUpdate(rival, "customer", 8, nullptr, 0), 0);
  EXPECT_EQ(NSFProfileUpdate(note, "Customer", 8, "Mail/Acme", 9), 0);
  NotesTerm();
  EXPECT_EQ(initialise(), noError);
  const DBHANDLE again = openDatabase();
  EXPECT_EQ(textOf(openProfile(again, "CUSTOMER"), "NAME"), "Rival");
  EXPECT_EQ(textOf(openProfile(again, "customer", "mail/acme"), "name"), "Nordholm");
  EXPECT_EQ(textOf(openProfile(again, "customer", "mail"), "name"), "");
  EXPECT_EQ(textOf(openNote(again, 1), "name"), "Rival") << "two notes for one profile";
  EXPECT_EQ(found(again), "2");
  EXPECT_EQ(wordsOf(NSFProfileUpdate(openNote(again, 2), "customer", 8, nullptr, 0)),
            "The note is not a profile note");
  NOTEHANDLE nameless = 77;
  EXPECT_EQ(wordsOf(NSFProfileOpen(again, "", 0, nullptr, 0, 1, &nameless)),
            "A profile needs a name");
}

TEST(Profile, LineThatIsOneNoLongerGivesItsNameFree) {
  const Server server(header +
                      R"({"note":1,"profile":"p","items":{"v":"1"}})"
                      "\n" +
                      noteLine(1) +
                      R"({"note":2,"profile":"P","items":{"v":"2"}})"
                      "\n"
                      R"({"note":3,"profile":"p","items":{"v":"3"}})"
                      "\n" +
                      noteLine(2));
  const DBHANDLE db = openDatabase();
  EXPECT_EQ(found(db), "1 2");
  EXPECT_EQ(textOf(openProfile(db, "p"), "v"), "3");
}

using Callback = std::function<STATUS(NOTEID)>;

STATUS search(DBHANDLE db, FORMULAHANDLE formula, Callback callback) {
  const auto callBack = [](void* context, SEARCH_MATCH* match, void* summary) -> STATUS {
    EXPECT_EQ(*static_cast<const WORD*>(summary), 0);
    EXPECT_EQ(WORD{match->NoteClass}, NOTE_CLASS_DATA);
    EXPECT_EQ(DWORD{match->ID.File.Innards[1]}, 0x852564F2);
    return (*static_cast<Callback*>(context))(match->ID.NoteID);
  };
  return NSFSearch(db, formula, "View", 0, NOTE_CLASS_DATA, nullptr, callBack, &callback, nullptr);
}

TEST(Search, CallbackMayDoAnythingAndSeesTheNotesOfTheStart) {
  const Server server(header + noteLine(1) + noteLine(9) + noteLine(3));
  const DBHANDLE db = openDatabase();
  const FORMULAHANDLE formula = compile("SELECT @All");
  std::string seen;
  const auto callback = [&](NOTEID id) -> STATUS {
    seen += std::to_string(id) + ",";
    const DBHANDLE inner = openDatabase();
    const NOTEHANDLE note = openNote(inner, id);
    EXPECT_EQ(setText(note, "seen", "yes"), 0);
    EXPECT_EQ(NSFNoteUpdate(note, 0), 0);
    EXPECT_EQ(write(inner, "new"), noError);
    if (id != 1) return 0;
    EXPECT_EQ(NSFDbClose(db), 0);
    EXPECT_EQ(OSMemFree(formula), 0);
    return 0;
  };
  EXPECT_EQ(search(db, formula, callback), 0);
  EXPECT_EQ(seen, "1,3,9,");
  EXPECT_EQ(foundIn(), "1 3 9 10 11 12");
  EXPECT_EQ(found(openDatabase(), R"(SELECT seen="yes")"), "1 3 9");
}

TEST(Search, EndsWithTheStatusOfItsCallbackAndNotWithTheLibrary) {
  const Server server(header + noteLine(1) + noteLine(2));
  const DBHANDLE db = openDatabase();
  int calls = 0;
  const auto callback = [&calls](NOTEID) -> STATUS {
    if (++calls == 2) NotesTerm();
    return calls == 1 ? 0x8123 : 0;
  };
  EXPECT_EQ(search(db, compile("SELECT @All"), callback), 0x8123);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(search(db, compile("SELECT @All"), callback), 0);
  EXPECT_EQ(calls, 3);
}

TEST(Search, WhatCannotBeSearchedForIsRefused) {
  const Server server(header + noteLine(1));
  const DBHANDLE db = openDatabase();
  const FORMULAHANDLE formula = compile("SELECT @All");
  const auto never = [](void*, SEARCH_MATCH*, void*) -> STATUS { return 1; };
  TIMEDATE time{{0, 2440588}};
  for (const STATUS status :
       {NSFSearch(db, formula, "", 1, NOTE_CLASS_DATA, nullptr, never, nullptr, nullptr),
        NSFSearch(db, formula, "", 0, 2, nullptr, never, nullptr, nullptr),
        NSFSearch(db, formula, "", 0, NOTE_CLASS_DATA, &time, never, nullptr, nullptr)})
    EXPECT_EQ(wordsOf(status),
              "The library searches documents only, and without flags or a time to begin at");
  EXPECT_NE(NSFSearch(db, formula, "", 0, 1, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(wordsOf(NSFSearch(db, db, "", 0, 1, nullptr, never, nullptr, nullptr)),
            "The handle is not that of a compiled formula");
}

}  // namespace
}  // namespace standin_tests
