// A library in place of the Notes library that fills its buffers to the last byte and remembers
// what it was asked.

#include <gtest/gtest.h>

#include <cstring>

#include "notes/api.h"
#include "notes/domino_api_tools.h"
#include "notes/formula_search.h"

namespace {

namespace DominoApiTools = notes::DominoApiTools;

std::string answer;
std::string asked;

template <typename Result>
Result give(char* buffer, const std::string& question) {
  asked = question;
  std::memcpy(buffer, answer.data(), answer.size());
  return 0;
}

class LibraryCalls : public testing::Test {
 protected:
  void SetUp() override {
    notes::api.OSLoadString = [](void*, STATUS code, char* buffer, WORD size) {
      return give<WORD>(buffer, std::to_string(code) + ' ' + std::to_string(size));
    };
    notes::api.OSGetEnvironmentString = [](const char* name, char* buffer, WORD size) {
      return give<BOOL>(buffer, name + std::to_string(size)) + (*name == 'K' ? 1 : 0);
    };
    notes::api.OSGetDataDirectory = [](char* path) { return give<WORD>(path, ""); };
    notes::api.OSGetExecutableDirectory = [](char* path) { give<WORD>(path, ""); };
    notes::api.NSFFormulaCompile = [](const char* name, WORD nameLength, const char* formula,
                                      WORD length, FORMULAHANDLE* handle, WORD*, STATUS*, WORD*,
                                      WORD*, WORD*, WORD*) -> STATUS {
      EXPECT_EQ(name, nullptr);
      EXPECT_EQ(nameLength, 0);
      asked = std::string(formula, length) + '|';
      *handle = 7;
      return 3;
    };
  }
  void TearDown() override { notes::api = before_; }

  const notes::NotesApi before_ = notes::api;
};

TEST_F(LibraryCalls, WordsOfAStatusAreThoseWithoutItsFlags) {
  answer = std::string(199, 'w') + "\xe9";
  EXPECT_EQ(DominoApiTools::errorTextNarrow(0xC103), answer);
  EXPECT_EQ(asked, "259 200");
  EXPECT_EQ(DominoApiTools::errorText(0x4103), std::u16string(199, u'w') + u"\u00e9");
  EXPECT_EQ(asked, "259 200");
}

TEST_F(LibraryCalls, VariableIsFilledWhetherItExistsOrNot) {
  answer = std::string(255, 'v') + "\xe9";
  std::string value = "before";
  EXPECT_TRUE(DominoApiTools::readEnvironment("Known", value));
  EXPECT_EQ(value, answer);
  EXPECT_EQ(asked, "Known256");
  std::u16string wide = u"before";
  EXPECT_FALSE(DominoApiTools::readEnvironmentWide("Missing", wide));
  EXPECT_EQ(wide, std::u16string(255, u'v') + u"\u00e9");
  EXPECT_TRUE(DominoApiTools::readEnvironmentWide("Known", wide));
}

TEST_F(LibraryCalls, DirectoriesCrossTheBoundaryInDifferentWays) {
  answer = "D:/caf\xe9+AOk-";
  EXPECT_EQ(DominoApiTools::dataDirectory(), u"D:/caf\u00e9+AOk-");
  EXPECT_EQ(DominoApiTools::executableDirectory(), u"D:/caf\u00e9\u00e9");
}

TEST_F(LibraryCalls, FormulaHasNoName) {
  FORMULAHANDLE handle = 0;
  EXPECT_EQ(notes::compileFormula("SELECT @All", handle), 3);
  EXPECT_EQ(asked, "SELECT @All|");
  EXPECT_EQ(handle, 7U);
}

}  // namespace
