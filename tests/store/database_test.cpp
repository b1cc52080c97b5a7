// Handles, paths, profiles and searches.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "store/world.h"

namespace store_tests {
namespace {

namespace fs = std::filesystem;

TEST(Database, PathsLeadToTheFile) {
  const World world(header, "ServerName=Mail/Acme\n");
  fs::create_directory("sub");
  fs::copy_file("a.nsf", "sub/b.nsf");
  const std::string missing = "The database does not exist";
  const std::string unknown = "The remote server is not a known host";
  const std::string noFile = "The path of the database leads to something that is not a file";
  const std::string absolute = fs::current_path().string();
  const std::pair<std::string, std::string> rows[] = {
      {"a.nsf", noError},
      {"sub/b.nsf", noError},
      {"sub\\b.nsf", noError},
      {absolute + "/a.nsf", noError},
      {absolute + "\\sub\\b.nsf", noError},
      {"Mail/Acme!!sub\\b.nsf", noError},
      {"TCPIP!!!MAIL/acme!!a.nsf", noError},
      {"TCPIP!!!a.nsf", noError},
      {"Mail!!a.nsf", unknown},
      {"Mail/Acme!!missing.nsf", missing},
      {"missing.nsf", missing},
      {"a", missing},
      {"a.nsf/b.nsf", missing},
      {"missing/a.nsf", missing},
      {"//host/share/a.nsf", missing},
      {"", missing},
      {"Mail/Acme!!", missing},
      {"sub", noFile},
      {".", noFile},
      {std::string(256, 'x'),
       "The port, the server or the file of the path has more than 255 bytes"},
  };
  for (const auto& [path, words] : rows) {
    EXPECT_EQ(tryOpen(path), words) << path;
    DBHANDLE db = 0;
    TIMEDATE changed{{7, 0}};
    const STATUS status =
        library().NSFDbOpenExtended(path.c_str(), 0, 0, nullptr, &db, nullptr, &changed);
    EXPECT_EQ(wordsOf(status), words) << path;
    const DWORD day = changed.Innards[1];
    EXPECT_EQ(status == 0, day > 2440588) << path;
  }
}

TEST(Database, TitleIsCutAndReplicaIdHasItsHighWordInFront) {
  const std::string title = "Quellbright \xC3\xA9 " + std::string(200, 't');
  const World world(R"({"database":{"title":")" + title + R"(","replica":"001234560000abCD"}})");
  const DBHANDLE db = openDatabase();
  DBREPLICAINFO replica{};
  EXPECT_EQ(library().NSFDbReplicaInfoGet(db, &replica), 0);
  const DWORD high = replica.ID.Innards[1];
  const DWORD low = replica.ID.Innards[0];
  EXPECT_EQ(high, 0x123456U);
  EXPECT_EQ(low, 0xABCDU);
  std::string info(NOTES_DBINFO_SIZE + 1, '#');
  std::string text(NOTES_TITLE_SIZE + 1, '#');
  EXPECT_EQ(library().NSFDbInfoGet(db, info.data()), 0);
  EXPECT_EQ(info, title.substr(0, 127) + '\0' + '#');
  library().NSFDbInfoParse(info.data(), INFOPARSE_TITLE, text.data(), NOTES_TITLE_SIZE);
  EXPECT_EQ(text, title.substr(0, 126) + '\0' + '#');
  library().NSFDbInfoParse(info.data(), INFOPARSE_TITLE + 1, text.data(), NOTES_TITLE_SIZE);
  EXPECT_EQ(text[0], '\0');
}

// What the operations that take a handle of a database, and of a note, answer for this one.
std::string askDatabase(DBHANDLE db, FORMULAHANDLE formula) {
  char info[NOTES_DBINFO_SIZE] = "#";
  DBREPLICAINFO replica{};
  HANDLE handle = 77;
  const auto never = [](void*, SEARCH_MATCH*, void*) -> STATUS { return 1; };
  std::string words = wordsOf(library().NSFDbInfoGet(db, info));
  for (const STATUS status :
       {library().NSFDbReplicaInfoGet(db, &replica), library().NSFNoteCreate(db, &handle),
        library().NSFNoteOpen(db, 1, 0, &handle),
        library().NSFProfileOpen(db, "p", 1, nullptr, 0, 1, &handle),
        library().NSFSearch(db, formula, nullptr, 0, 1, nullptr, never, nullptr, nullptr),
        library().NSFDbClose(db)})
    EXPECT_EQ(wordsOf(status), words);
  EXPECT_EQ(handle, 77U);
  EXPECT_STREQ(info, "#");
  return words;
}

std::string askNote(NOTEHANDLE note) {
  char text[] = "#";
  NUMBER number = 77;
  TIMEDATE time{{0, 2440588}};
  std::string words = wordsOf(library().NSFNoteUpdate(note, 0));
  for (const STATUS status :
       {library().NSFProfileUpdate(note, "p", 1, nullptr, 0), setText(note, "x", "y"),
        library().NSFItemSetNumber(note, "x", &number), library().NSFItemSetTime(note, "x", &time),
        library().NSFItemInfo(note, "Form", 4, nullptr, nullptr, nullptr, nullptr)})
    EXPECT_EQ(wordsOf(status), words);
  EXPECT_EQ(library().NSFItemGetText(note, "Form", text, 2), 0);
  EXPECT_EQ(library().NSFItemConvertToText(note, "Form", text, 2, '|'), 0);
  EXPECT_EQ(library().NSFItemGetNumber(note, "Form", &number), 0);
  EXPECT_EQ(library().NSFItemGetTextListEntries(note, "Form"), 0);
  EXPECT_STREQ(text, "#");
  return words;
}

TEST(Handles, OnlyOpenOnesOfTheRightKindWork) {
  const std::string noDatabase = "The handle is not that of an open database";
  const std::string noNote = "The handle is not that of an open note";
  const std::string closed = "The database of the note is closed";
  const World world(header + noteLine(1, R"("Form":"x")"));
  const DBHANDLE db = openDatabase();
  const NOTEHANDLE note = openNote(db, 1);
  const NOTEHANDLE profile = createNote(db);
  const FORMULAHANDLE formula = compile("SELECT @All");
  for (const HANDLE wrong : {HANDLE{0}, note, formula, HANDLE{0xFFFFFFFF}})
    EXPECT_EQ(askDatabase(wrong, formula), noDatabase);
  for (const HANDLE wrong : {HANDLE{0}, db, formula, HANDLE{0xFFFFFFFF}}) {
    EXPECT_EQ(askNote(wrong), noNote);
    EXPECT_EQ(wordsOf(library().NSFNoteClose(wrong)), noNote);
  }
  for (const HANDLE wrong : {HANDLE{0}, db, note}) EXPECT_NE(library().OSMemFree(wrong), 0);
  EXPECT_EQ(library().NSFNoteClose(profile), 0);
  EXPECT_EQ(askNote(profile), noNote) << "closed twice";
  EXPECT_EQ(library().NSFDbClose(db), 0);
  EXPECT_EQ(askDatabase(db, formula), noDatabase) << "closed twice";
  const DBHANDLE younger = openDatabase();
  EXPECT_EQ(askNote(note), closed) << "the note went over to a younger connection";
  EXPECT_EQ(library().NSFNoteClose(note), 0);
  EXPECT_EQ(library().OSMemFree(formula), 0);
  EXPECT_NE(library().OSMemFree(formula), 0);
  const auto never = [](void*, SEARCH_MATCH*, void*) -> STATUS { return 1; };
  EXPECT_EQ(wordsOf(library().NSFSearch(younger, formula, nullptr, 0, NOTE_CLASS_DATA, nullptr,
                                        never, nullptr, nullptr)),
            "The handle is not that of a compiled formula");
  library().NotesTerm();
  EXPECT_EQ(askDatabase(younger, formula), "The library is not initialised");
}

NOTEHANDLE openProfile(DBHANDLE db, const std::string& profile, const std::string& user) {
  NOTEHANDLE note = 0;
  const STATUS status = library().NSFProfileOpen(
      db, profile.data(), static_cast<WORD>(profile.size()), user.empty() ? nullptr : user.data(),
      static_cast<WORD>(user.size()), 1, &note);
  EXPECT_EQ(wordsOf(status), noError);
  return note;
}

TEST(Profile, ReachesTheFileOnlyByItsOwnUpdate) {
  const World world;
  const DBHANDLE db = openDatabase();
  const NOTEHANDLE note = openProfile(db, "Customer", "");
  EXPECT_EQ(setText(note, "name", "Nordholm"), 0);
  EXPECT_EQ(wordsOf(library().NSFNoteUpdate(note, 0)),
            "A profile note is written only by the operation for profiles");
  EXPECT_EQ(textOf(openProfile(db, "Customer", ""), "name"), "");
  const NOTEHANDLE rival = openProfile(db, "customer", "");
  EXPECT_EQ(setText(rival, "name", "Rival"), 0);
  EXPECT_EQ(library().NSFNoteClose(openProfile(db, "other", "")), 0);
  EXPECT_EQ(test::contentOf("a.nsf"), header);

  EXPECT_EQ(library().NSFProfileUpdate(note, "Customer", 8, nullptr, 0), 0);
  EXPECT_EQ(write(db, "document"), noError);
  EXPECT_EQ(library().NSFProfileUpdate(rival, "customer", 8, nullptr, 0), 0);
  EXPECT_EQ(library().NSFProfileUpdate(note, "Customer", 8, "Mail/Acme", 9), 0);
  restart();
  const DBHANDLE again = openDatabase();
  EXPECT_EQ(textOf(openProfile(again, "CUSTOMER", ""), "NAME"), "Rival");
  EXPECT_EQ(textOf(openProfile(again, "customer", "mail/acme"), "name"), "Nordholm");
  EXPECT_EQ(textOf(openProfile(again, "customer", "mail"), "name"), "");
  EXPECT_EQ(textOf(openNote(again, 1), "name"), "Rival") << "two notes for one profile";
  EXPECT_EQ(found(again), "2");
  EXPECT_EQ(wordsOf(library().NSFProfileUpdate(openNote(again, 2), "customer", 8, nullptr, 0)),
            "The note is not a profile note");
  NOTEHANDLE nameless = 77;
  EXPECT_EQ(wordsOf(library().NSFProfileOpen(again, "", 0, nullptr, 0, 1, &nameless)),
            "A profile needs a name");
}

TEST(Profile, LineThatIsOneNoLongerGivesItsNameFree) {
  const std::string profile = R"({"note":1,"profile":"p","items":{"v":"1"}})"
                              "\n";
  const World world(header + profile + noteLine(1, "") +
                    R"({"note":2,"profile":"P","items":{"v":"2"}})"
                    "\n" +
                    R"({"note":3,"profile":"p","items":{"v":"3"}})"
                    "\n" +
                    R"({"note":2,"items":{}})"
                    "\n");
  const DBHANDLE db = openDatabase();
  EXPECT_EQ(found(db), "1 2");
  EXPECT_EQ(textOf(openProfile(db, "p", ""), "v"), "3");
}

using Callback = std::function<STATUS(NOTEID)>;

STATUS NOTES_CALL callBack(void* context, SEARCH_MATCH* match, void* summary) {
  EXPECT_EQ(*static_cast<const WORD*>(summary), 0);
  const WORD noteClass = match->NoteClass;
  EXPECT_EQ(noteClass, NOTE_CLASS_DATA);
  return (*static_cast<Callback*>(context))(match->ID.NoteID);
}

STATUS search(DBHANDLE db, FORMULAHANDLE formula, Callback callback) {
  return library().NSFSearch(db, formula, "Configurations", 0, NOTE_CLASS_DATA, nullptr, callBack,
                             &callback, nullptr);
}

TEST(Search, CallbackMayDoAnythingAndSeesTheNotesOfTheStart) {
  const World world(header + noteLine(1, "") + noteLine(9, "") + noteLine(3, ""));
  const DBHANDLE db = openDatabase();
  const FORMULAHANDLE formula = compile("SELECT @All");
  std::vector<NOTEID> seen;
  const auto callback = [&](NOTEID id) -> STATUS {
    seen.push_back(id);
    const DBHANDLE inner = openDatabase();
    EXPECT_EQ(write(inner, "new"), noError);
    const NOTEHANDLE note = openNote(inner, id);
    EXPECT_EQ(setText(note, "seen", "yes"), 0);
    EXPECT_EQ(wordsOf(library().NSFNoteUpdate(note, 0)), noError);
    EXPECT_EQ(found(inner), seen.size() == 1   ? "1 3 9 10"
                            : seen.size() == 2 ? "1 3 9 10 11"
                                               : "1 3 9 10 11 12");
    EXPECT_EQ(library().NSFDbClose(inner), 0);
    if (id != 1) return 0;
    EXPECT_EQ(library().NSFDbClose(db), 0);
    EXPECT_EQ(library().OSMemFree(formula), 0);
    return 0;
  };
  EXPECT_EQ(search(db, formula, callback), 0);
  EXPECT_EQ(seen, (std::vector<NOTEID>{1, 3, 9}));
  EXPECT_EQ(found(openDatabase(), R"(SELECT seen="yes")"), "1 3 9");
}

TEST(Search, StatusOfTheCallbackEndsItAndComesBack) {
  const World world(header + noteLine(1, "") + noteLine(2, ""));
  const DBHANDLE db = openDatabase();
  int calls = 0;
  const auto fail = [&calls](NOTEID) -> STATUS { return ++calls == 1 ? 0x8123 : 0; };
  EXPECT_EQ(search(db, compile("SELECT @All"), fail), 0x8123);
  EXPECT_EQ(calls, 1);
  const auto end = [&calls](NOTEID) -> STATUS {
    if (++calls == 2) library().NotesTerm();
    return 0;
  };
  EXPECT_EQ(search(db, compile("SELECT @All"), end), 0);
  EXPECT_EQ(calls, 3) << "the end of the library ended the search";
}

TEST(Search, WhatCannotBeSearchedForIsRefused) {
  const World world(header + noteLine(1, ""));
  const DBHANDLE db = openDatabase();
  const FORMULAHANDLE formula = compile("SELECT @All");
  const auto never = [](void*, SEARCH_MATCH*, void*) -> STATUS { return 1; };
  TIMEDATE time{{0, 2440588}};
  const std::string refused =
      "The library searches documents only, and without flags or a time to begin at";
  for (const STATUS status :
       {library().NSFSearch(db, formula, nullptr, 1, 1, nullptr, never, nullptr, nullptr),
        library().NSFSearch(db, formula, nullptr, 0, 2, nullptr, never, nullptr, nullptr),
        library().NSFSearch(db, formula, nullptr, 0, 1, &time, never, nullptr, nullptr)})
    EXPECT_EQ(wordsOf(status), refused);
  EXPECT_NE(library().NSFSearch(db, formula, nullptr, 0, 1, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_NE(library().NSFSearch(db, 0, nullptr, 0, 1, nullptr, never, nullptr, nullptr), 0);
}

}  // namespace
}  // namespace store_tests
