#include "server.h"

#include <gtest/gtest.h>

namespace standin_tests {

std::string noteLine(NOTEID id, const std::string& items) {
  return R"({"note":)" + std::to_string(id) + R"(,"items":{)" + items + "}}\n";
}

std::string wordsOf(STATUS status) {
  char words[NOTES_ERROR_TEXT_SIZE] = {};
  const WORD length = OSLoadString(nullptr, status, words, sizeof words);
  EXPECT_EQ(length, std::string(words).size());
  return words;
}

std::string initialise(std::string first, std::string second) {
  char* arguments[] = {nullptr, first.data(), second.data()};
  return wordsOf(NotesInitExtended(3, arguments));
}

Server::Server(const std::string& database, const std::string& settings) {
  std::filesystem::current_path(folder_.path());
  test::writeFile("notes.ini", settings + "\nDirectory=.");
  test::writeFile("a.nsf", database);
  EXPECT_EQ(initialise(), noError);
}

Server::~Server() {
  NotesTerm();
  std::filesystem::current_path(before_);
}

DBHANDLE openDatabase(const std::string& path) {
  DBHANDLE db = 0;
  TIMEDATE changed{};
  const STATUS status = NSFDbOpenExtended(path.c_str(), 0, 0, nullptr, &db, nullptr, &changed);
  EXPECT_EQ(wordsOf(status), noError);
  EXPECT_GT(DWORD{changed.Innards[1]}, 2440588U) << "a file has a time";
  return db;
}

NOTEHANDLE openNote(DBHANDLE db, NOTEID id) {
  NOTEHANDLE note = 0;
  EXPECT_EQ(wordsOf(NSFNoteOpen(db, id, 0, &note)), noError) << id;
  return note;
}

FORMULAHANDLE compile(const std::string& formula) {
  FORMULAHANDLE handle = 0;
  WORD any = 0;  // a caller may pass one place for all results
  const auto size = static_cast<WORD>(formula.size());
  EXPECT_EQ(wordsOf(NSFFormulaCompile(nullptr, 0, formula.data(), size, &handle, &any, &any, &any,
                                      &any, nullptr, nullptr)),
            noError);
  return handle;
}

STATUS setText(NOTEHANDLE note, const std::string& item, const std::string& text) {
  return NSFItemSetText(note, item.c_str(), text.data(), static_cast<WORD>(text.size()));
}

std::string textOf(NOTEHANDLE note, const std::string& item) {
  std::string text(65535, '?');
  text.resize(NSFItemGetText(note, item.c_str(), text.data(), 65535));
  return text;
}

std::string found(DBHANDLE db, const std::string& formula) {
  std::string ids;
  const auto appendId = [](void* context, SEARCH_MATCH* match, void*) -> STATUS {
    auto& text = *static_cast<std::string*>(context);
    text += (text.empty() ? "" : " ") + std::to_string(match->ID.NoteID);
    return 0;
  };
  const FORMULAHANDLE handle = compile(formula);
  EXPECT_EQ(NSFSearch(db, handle, "", 0, NOTE_CLASS_DATA, nullptr, appendId, &ids, nullptr), 0);
  EXPECT_EQ(OSMemFree(handle), 0);
  return ids;
}

std::string foundIn(const std::string& path) {
  DBHANDLE db = 77;
  const STATUS status = NSFDbOpen(path.c_str(), &db);
  EXPECT_EQ(status != 0, db == 77) << "a failure wrote its output";
  if (status != 0) return wordsOf(status);
  std::string ids = found(db);
  EXPECT_EQ(NSFDbClose(db), 0);
  return ids;
}

std::string write(DBHANDLE db, const std::string& text) {
  NOTEHANDLE note = 0;
  EXPECT_EQ(wordsOf(NSFNoteCreate(db, &note)), noError);
  EXPECT_EQ(setText(note, "text", text), 0);
  const STATUS status = NSFNoteUpdate(note, 0);
  EXPECT_EQ(NSFNoteClose(note), 0);
  return wordsOf(status);
}

}  // namespace standin_tests
