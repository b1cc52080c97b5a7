#include "driver/environment_checks.h"

#include <gtest/gtest.h>

#include <cstring>

#include "notes/api.h"
#include "support/temporary_folder.h"

namespace {

using Values = std::map<std::string, std::string>;
Values variables;

BOOL NOTES_CALL getEnvironmentString(const char* name, char* value, WORD size) {
  const auto found = variables.find(name);
  value[0] = '\0';
  if (found == variables.end()) return 0;
  std::strncat(value, found->second.c_str(), size - 1U);
  return 1;
}

class EnvironmentChecks : public testing::Test {
 protected:
  void SetUp() override { notes::api.OSGetEnvironmentString = getEnvironmentString; }
};

TEST_F(EnvironmentChecks, OnlyTheCommaSeparatesAndBlanksDisappear) {
  using Tokens = std::vector<std::string>;
  const struct {
    std::string value;
    Tokens tokens;
  } rows[] = {
      {"Update, Router,nqbschd", {"Update", "Router", "nqbschd"}},
      {"a b,c", {"ab", "c"}},
      {"qbrouter", {"qbrouter"}},
      {"a,", {"a"}},
      {"a,,b", {"a", "", "b"}},
      {"a, ", {"a", ""}},
      {",", {""}},
      {" ", {""}},
      {"a;b\tc", {"a;b\tc"}},
      {"", {}},
  };
  for (const auto& row : rows) {
    variables = {{"V", row.value}};
    Tokens tokens = {"kept"};
    driver::splitEnvironmentValue("V", tokens);
    Tokens expected = row.tokens;
    expected.insert(expected.begin(), "kept");
    EXPECT_EQ(tokens, expected) << row.value;
  }
}

TEST_F(EnvironmentChecks, TokenCountsOnlyWholeAndInItsCase) {
  const struct {
    const char* value;
    bool present;
  } rows[] = {{"Router,nqbschd", true},
              {"nqbschd.exe", false},
              {"NQBSCHD", false},
              {"Router, nqb schd ", true},
              {"", false},
              {"xnqbschd,nqbsch", false}};
  for (const auto& row : rows) {
    variables = {{"ServerTasks", row.value}};
    EXPECT_EQ(driver::tokenIsPresent("ServerTasks", "nqbschd"), row.present) << row.value;
  }
  EXPECT_FALSE(driver::tokenIsPresent("Unset", ""));
}

TEST_F(EnvironmentChecks, SectionsHaveTheirOrderWhateverIsSet) {
  variables = {{"ServerTasks", "Update"}, {"EXTMGR_ADDINS", "qbsmtp.dll"}, {"Names", "a=b"}};
  std::string text = "before";
  driver::systemEnvironmentText(driver::environmentNames(), text, 5);
  EXPECT_EQ(text,
            "SYSTEM ENVIRONMENT:"
            "\n\t\t\t\t\tServerTasks=Update"
            "\n\t\t\t\t\tEXTMGR_ADDINS=qbsmtp.dll"
            "\n\t\t\t\t\tNSF_HOOKS="
            "\n\t\t\t\t\tNotesProgram="
            "\n\t\t\t\t\tDirectory="
            "\n\t\t\t\t\tFaultRecovery_Build="
            "\n\t\t\t\t\tServerName="
            "\n\t\t\t\t\tNames=a=b"
            "\n\t\t\t\t\tvrx_use_names_nsf=");
  driver::dominoEnvironmentText(driver::environmentChecks(), text, 1);
  EXPECT_EQ(text,
            "DOMINO ENVIRONMENT VARIABLES:"
            "\n\tqbsmtp.dll was found in EXTMGR_ADDINS."
            "\n\tqbrouter was not found in NSF_HOOKS."
            "\n\tnqbschd was not found in ServerTasks.");
}

TEST_F(EnvironmentChecks, FilesAreJoinedToTheirDirectoriesAsTheseCome) {
  const test::TemporaryFolder folder;
  test::writeFile(folder.path() / "qbsg.dll", "");
  std::filesystem::create_directory(folder.path() / "QBConf.nsf");
  const std::u16string at = folder.wide();
  std::u16string text;
  driver::fileCheckText(driver::checkedFiles(at + u"/", at), text, 2);
  EXPECT_EQ(text,
            u"FILE CHECK:"
            u"\n\t\t" +
                at +
                u"/qbse.dll was not found."
                u"\n\t\t" +
                at +
                u"/qbsg.dll was found."
                u"\n\t\t" +
                at +
                u"/nqbschd.exe was not found."
                u"\n\t\t" +
                at +
                u"/qbsmtp.dll was not found."
                u"\n\t\t" +
                at +
                u"/qbrouter.dll was not found."
                u"\n\t\t" +
                at +
                u"\\QBConf.nsf was found."
                u"\n\t\t" +
                at + u"\\QBConf002.ntf was not found.");
}

}  // namespace
