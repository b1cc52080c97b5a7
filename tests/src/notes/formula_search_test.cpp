#include "notes/formula_search.h"

#include <stdexcept>

#include "notes/nsf_db_connection.h"
#include "support/notes_server.h"

namespace {

class Search : public test::NotesServer {};

TEST_F(Search, KeepsItsMatchesAndStopsAtTheFailureOfItsVisitor) {
  start("{\"note\":1,\"items\":{}}\n{\"note\":2,\"items\":{}}\n{\"note\":5,\"items\":{}}\n");
  notes::FormulaSearch search("QBConf.nsf", "SELECT @All");
  search.search();
  search.search();
  ASSERT_EQ(search.count(), 6U);
  EXPECT_EQ(search.noteId(2), 5U);
  EXPECT_EQ(search.noteId(3), 1U);
  EXPECT_THROW(static_cast<void>(search.noteId(6)), std::out_of_range);

  const notes::NsfDbConnection connection("QBConf.nsf");
  notes::CompiledFormula formula(notes::AfterSearch::keep);
  ASSERT_EQ(formula.compile("SELECT @All"), 0);
  int visits = 0;
  const auto visit = [&visits](NOTEID) {
    if (++visits == 2) throw std::range_error("the second");
    return 0;
  };
  EXPECT_THROW(notes::searchNotes(connection, formula, nullptr, visit), std::range_error);
  EXPECT_EQ(visits, 2);
  const auto end = [](NOTEID id) { return static_cast<STATUS>(id == 5 ? 5 : 0); };
  EXPECT_EQ(notes::searchNotes(connection, formula, nullptr, end), 5);
}

}  // namespace
