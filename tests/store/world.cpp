#include "store/world.h"

#include <gtest/gtest.h>

namespace store_tests {
namespace {

STATUS NOTES_CALL appendId(void* context, SEARCH_MATCH* match, void*) {
  static_cast<std::vector<NOTEID>*>(context)->push_back(match->ID.NoteID);
  return 0;
}

}  // namespace

std::string noteLine(NOTEID id, const std::string& items) {
  return R"({"note":)" + std::to_string(id) + R"(,"items":{)" + items + "}}\n";
}

World::World(const std::string& content, const std::string& settings)
    : Server("Directory=.\n" + settings) {
  test::writeFile("a.nsf", content);
  EXPECT_EQ(initialise(), noError);
}

void restart() {
  library().NotesTerm();
  EXPECT_EQ(initialise(), noError);
}

std::string tryOpen(const std::string& path) {
  DBHANDLE db = 77;
  const STATUS status = library().NSFDbOpen(path.c_str(), &db);
  if (status == 0)
    EXPECT_EQ(library().NSFDbClose(db), 0);
  else
    EXPECT_EQ(db, 77U) << "a failure wrote its output";
  return wordsOf(status);
}

DBHANDLE openDatabase(const std::string& path) {
  DBHANDLE db = 0;
  EXPECT_EQ(wordsOf(library().NSFDbOpen(path.c_str(), &db)), noError);
  return db;
}

NOTEHANDLE openNote(DBHANDLE db, NOTEID id) {
  NOTEHANDLE note = 0;
  EXPECT_EQ(wordsOf(library().NSFNoteOpen(db, id, 0, &note)), noError) << id;
  return note;
}

NOTEHANDLE createNote(DBHANDLE db) {
  NOTEHANDLE note = 0;
  EXPECT_EQ(wordsOf(library().NSFNoteCreate(db, &note)), noError);
  return note;
}

FORMULAHANDLE compile(const std::string& formula) {
  WORD scratch = 0;
  FORMULAHANDLE handle = 0;
  const STATUS status = library().NSFFormulaCompile(
      nullptr, 0, formula.data(), static_cast<WORD>(formula.size()), &handle, &scratch, &scratch,
      &scratch, &scratch, &scratch, &scratch);
  EXPECT_EQ(wordsOf(status), noError) << formula;
  return handle;
}

STATUS setText(NOTEHANDLE note, const char* item, const std::string& text) {
  return library().NSFItemSetText(note, item, text.data(), static_cast<WORD>(text.size()));
}

std::string textOf(NOTEHANDLE note, const char* item) {
  std::string text(65535, '?');
  text.resize(library().NSFItemGetText(note, item, text.data(), 65535));
  return text;
}

std::string found(DBHANDLE db, const std::string& formula) {
  std::vector<NOTEID> ids;
  FORMULAHANDLE handle = 0;
  STATUS status =
      library().NSFFormulaCompile(nullptr, 0, formula.data(), static_cast<WORD>(formula.size()),
                                  &handle, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  if (status == 0) {
    status = library().NSFSearch(db, handle, nullptr, 0, NOTE_CLASS_DATA, nullptr, appendId, &ids,
                                 nullptr);
    EXPECT_EQ(library().OSMemFree(handle), 0);
  }
  if (status != 0) return wordsOf(status);
  std::string text;
  for (const NOTEID id : ids) text += (text.empty() ? "" : " ") + std::to_string(id);
  return text;
}

std::string foundIn(const std::string& path) {
  DBHANDLE db = 0;
  const STATUS status = library().NSFDbOpen(path.c_str(), &db);
  if (status != 0) return wordsOf(status);
  std::string ids = found(db);
  EXPECT_EQ(library().NSFDbClose(db), 0);
  return ids;
}

std::string write(DBHANDLE db, const std::string& text) {
  const NOTEHANDLE note = createNote(db);
  EXPECT_EQ(setText(note, "text", text), 0);
  const STATUS status = library().NSFNoteUpdate(note, 0);
  EXPECT_EQ(library().NSFNoteClose(note), 0);
  return wordsOf(status);
}

}  // namespace store_tests
