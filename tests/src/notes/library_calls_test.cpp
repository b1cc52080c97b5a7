#include <gtest/gtest.h>

#include <cstring>

#include "notes/api.h"
#include "notes/domino_api_tools.h"
#include "notes/formula_search.h"

namespace {

namespace DominoApiTools = notes::DominoApiTools;

// A library that fills its buffers to the last byte and remembers what it was asked.
std::string answer;
std::string asked;

WORD put(char* buffer, const std::string& question) {
  asked = question;
  std::memcpy(buffer, answer.data(), answer.size());
  return 0;
}

TEST(LibraryCalls, TextsThatFillTheirBuffersEndWithThemAndFormulasHaveNoName) {
  const notes::NotesApi before = notes::api;
  notes::api.OSLoadString = [](void*, STATUS code, char* buffer, WORD size) -> WORD {
    return put(buffer, std::to_string(code) + ' ' + std::to_string(size));
  };
  answer = std::string(199, 'w') + "\xe9";
  EXPECT_EQ(DominoApiTools::errorTextNarrow(0xC103), answer);
  EXPECT_EQ(asked, "259 200") << "flags of a status are no part of its number";
  EXPECT_EQ(DominoApiTools::errorText(0x4103), std::u16string(199, u'w') + u"\u00e9");

  notes::api.OSGetEnvironmentString = [](const char* name, char* value, WORD size) -> BOOL {
    return put(value, name + std::to_string(size)) + (*name == 'K' ? 1 : 0);
  };
  answer = std::string(255, 'v') + "\xe9";
  std::string value = "before";
  EXPECT_TRUE(DominoApiTools::readEnvironment("Known", value));
  EXPECT_EQ(value, answer);
  EXPECT_EQ(asked, "Known256");
  std::u16string wide = u"before";
  EXPECT_FALSE(DominoApiTools::readEnvironmentWide("Missing", wide));
  EXPECT_EQ(wide, std::u16string(255, u'v') + u"\u00e9");

  notes::api.NSFFormulaCompile = [](const char* name, WORD nameLength, const char* formula,
                                    WORD length, FORMULAHANDLE*, WORD*, STATUS*, WORD*, WORD*,
                                    WORD*, WORD*) -> STATUS {
    asked = std::string(formula, length) + (name == nullptr ? "" : "named");
    return nameLength;
  };
  EXPECT_EQ(notes::CompiledFormula(notes::AfterSearch::keep).compile("SELECT @All"), 0);
  EXPECT_EQ(asked, "SELECT @All");
  notes::api = before;
}

}  // namespace
