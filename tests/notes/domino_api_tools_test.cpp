#include "notes/domino_api_tools.h"

#include <gtest/gtest.h>

#include <cstring>

#include "notes/api.h"

namespace {

namespace DominoApiTools = notes::DominoApiTools;

// A library that remembers what it was given.
struct {
  STATUS status;
  STATUS askedCode;
  std::string words;
  std::string value;
  INTLFORMAT settings;
  TFMT format;
  std::string text;
  WORD size;
} library;

WORD NOTES_CALL loadString(void* module, STATUS code, char* buffer, WORD size) {
  EXPECT_EQ(module, nullptr);
  library.askedCode = code;
  library.size = size;
  std::memcpy(buffer, library.words.data(), library.words.size());
  return 0;
}

BOOL NOTES_CALL getEnvironmentString(const char* name, char* value, WORD size) {
  library.size = size;
  std::memcpy(value, library.value.data(), library.value.size());
  return std::strcmp(name, "Known") == 0 ? 1 : 0;
}

WORD NOTES_CALL getDataDirectory(char* path) {
  std::memcpy(path, library.value.data(), library.value.size());
  return 0;
}

void NOTES_CALL getExecutableDirectory(char* path) { getDataDirectory(path); }

STATUS NOTES_CALL replicaInfoGet(DBHANDLE db, DBREPLICAINFO* info) {
  EXPECT_EQ(db, 7U);
  if (library.status == 0) info->ID = {{0xABCD, 0x123456}};
  return library.status;
}

void NOTES_CALL getIntlSettings(INTLFORMAT* settings, WORD size) {
  library.size = size;
  std::memset(settings, 'x', size);
}

STATUS NOTES_CALL convertText(const INTLFORMAT* settings, const TFMT* format, char** text,
                              WORD maximumLength, TIMEDATE* time) {
  library.settings = *settings;
  library.format = *format;
  library.text = *text;
  EXPECT_EQ(maximumLength, 80);
  *text += std::strlen(*text);
  if (library.status == 0) *time = {{1, 2}};
  return library.status;
}

class DominoApiToolsTest : public testing::Test {
 protected:
  void SetUp() override {
    library = {};
    library.words = "the words";
    notes::api = {};
    notes::api.OSLoadString = loadString;
    notes::api.OSGetEnvironmentString = getEnvironmentString;
    notes::api.OSGetDataDirectory = getDataDirectory;
    notes::api.OSGetExecutableDirectory = getExecutableDirectory;
    notes::api.NSFDbReplicaInfoGet = replicaInfoGet;
    notes::api.OSGetIntlSettings = getIntlSettings;
    notes::api.ConvertTextToTIMEDATE = convertText;
  }
};

TEST_F(DominoApiToolsTest, FlagBitsOfAStatusDoNotCountForItsWords) {
  library.words = "caf\xe9";
  EXPECT_EQ(DominoApiTools::errorText(0xC103), u"caf\u00e9");
  EXPECT_EQ(library.askedCode, 0x0103);
  EXPECT_EQ(library.size, 200);
  EXPECT_EQ(DominoApiTools::errorTextNarrow(0x4103), "caf\xe9");
  EXPECT_EQ(library.askedCode, 0x0103);
}

TEST_F(DominoApiToolsTest, WordsThatFillTheBufferEndWithIt) {
  library.words = std::string(200, 'w');
  EXPECT_EQ(DominoApiTools::errorTextNarrow(1), library.words);
}

TEST_F(DominoApiToolsTest, ReplicaIdHasItsHighWordFirst) {
  EXPECT_EQ(DominoApiTools::replicaId(7), u"001234560000ABCD");
  library.status = 0x4102;
  try {
    DominoApiTools::replicaId(7);
    FAIL() << "a failed call is told";
  } catch (const DominoApiTools::DominoApiToolsError& error) {
    EXPECT_EQ(error.message(), u"Could not retrieve replica information: the words");
  }
}

TEST_F(DominoApiToolsTest, TimeIsReadAsYearMonthDayWhateverTheServersSettings) {
  TIMEDATE time{};
  DominoApiTools::timeDateFromText("2012-01-02 03:04:05", time);
  EXPECT_EQ(DWORD{time.Innards[1]}, 2U);
  EXPECT_EQ(library.size, 139);
  EXPECT_EQ(library.text, "2012-01-02 03:04:05");
  EXPECT_EQ(library.settings.Flags, 0x8C);
  EXPECT_STREQ(library.settings.DateString, "-");
  EXPECT_STREQ(library.settings.TimeString, ":");
  EXPECT_EQ(library.settings.AMString[0], 'x') << "the other settings stay the server's";
  EXPECT_EQ(std::memcmp(&library.format, "\4\0\0\2", 4), 0);
  library.status = 1;
  try {
    DominoApiTools::timeDateFromText("soon", time);
    FAIL() << "a failed call is told";
  } catch (const DominoApiTools::DominoApiError& error) {
    EXPECT_EQ(error.message(), u"Could not create TIMEDATE: the words");
  }
}

TEST_F(DominoApiToolsTest, VariableIsFilledWhetherItExistsOrNot) {
  library.value = std::string(255, 'v') + "\xe9";
  std::string value = "before";
  EXPECT_TRUE(DominoApiTools::readEnvironment("Known", value));
  EXPECT_EQ(value, library.value) << "also where the library leaves no closing zero";
  EXPECT_EQ(library.size, 256);
  std::u16string wide = u"before";
  EXPECT_TRUE(DominoApiTools::readEnvironmentWide("Known", wide));
  EXPECT_EQ(wide, std::u16string(255, u'v') + u"\u00e9");
  library.value = "";
  EXPECT_FALSE(DominoApiTools::readEnvironment("Unknown", value));
  EXPECT_EQ(value, "");
  EXPECT_FALSE(DominoApiTools::readEnvironmentWide("Unknown", wide));
  EXPECT_EQ(wide, u"");
}

TEST_F(DominoApiToolsTest, DirectoriesCrossTheBoundaryInDifferentWays) {
  library.value = "D:/caf\xe9+AOk-";
  EXPECT_EQ(DominoApiTools::dataDirectory(), u"D:/caf\u00e9+AOk-");
  EXPECT_EQ(DominoApiTools::executableDirectory(), u"D:/caf\u00e9\u00e9");
}

}  // namespace
