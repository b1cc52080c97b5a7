#include "configuration/vrx_configuration.h"

#include <algorithm>

#include "support/notes_server.h"

namespace {

using configuration::VRXConfiguration;

using test::closeFailure;
using test::openFailure;
using test::unknown;

class Configuration : public test::NotesServer {
 protected:
  // Active configurations with these items besides.
  static std::string active(const std::vector<std::string>& notes) {
    std::string lines;
    int id = 0;
    for (const std::string& items : notes) {
      lines += "{\"note\":" + std::to_string(++id) + ",\"items\":{\"ActiveConfiguration\":\"Yes\"" +
               (items.empty() ? "" : ",") + items + "}}\n";
    }
    return lines;
  }

  // The rows of a load, "label=value" each; the message behind "error: " where it fails.
  std::vector<std::string> rows() {
    configuration_ = {};
    configuration_.initialise();
    bool reloaded = false;
    std::vector<std::string> result;
    try {
      configuration_.refresh(reloaded);
    } catch (const VRXConfiguration::ConfigurationError& error) {
      return {"error: " + narrow(error.message())};
    }
    EXPECT_TRUE(reloaded);
    for (const auto& [label, value] : configuration_.reportRows) {
      result.push_back(narrow(label) + "=" + narrow(value));
    }
    return result;
  }

  // The values of those rows that differ from the rows of a note without items, in order.
  std::vector<std::string> rowsBeside(const std::string& items) {
    writeDatabase("QBConf.nsf", active({items}));
    std::vector<std::string> result;
    for (const std::string& row : rows()) {
      if (std::find(bare.begin(), bare.end(), row) == bare.end()) result.push_back(row);
    }
    return result;
  }

  const std::vector<std::string> bare = {"ConfigurationName=Default",
                                         "SPAM probability threshold=medium",
                                         "SPAM threshold: =",
                                         "SPAM threshold actual:=0",
                                         "Delete  if SPAM, otherwise move to Quellbright folder=No",
                                         "Languages for language filter=",
                                         "Log level=2",
                                         "Real loglevel=Normal"};
  VRXConfiguration configuration_;
};

TEST_F(Configuration, WithoutActiveNoteThereIsATitleAndTheDefaultsStand) {
  start(R"({"note":1,"items":{"ActiveConfiguration":"No","ConfigurationName":"x"}})"
        "\n");
  EXPECT_TRUE(rows().empty());
  EXPECT_EQ(configuration_.report(), u"\r\n\n\tQUELLBRIGHT CONFIGURATION\r\n");
  EXPECT_FALSE(configuration_.noteRead);
  EXPECT_EQ(configuration_.rejectLine, " \r\n");
  EXPECT_EQ(configuration_.rejectCode, "550");
  EXPECT_EQ(configuration_.serverName, "mail");
  EXPECT_EQ(configuration_.dataDirectory, folder_.wide());
}

TEST_F(Configuration, ItemsThatAreAbsentEmptyOrOfAnotherTypeGiveTheirDefaults) {
  start(active({""}));
  EXPECT_EQ(rows(), bare);
  EXPECT_TRUE(configuration_.noteRead);
  const std::string names[] = {
      "ConfigurationName",    "SpamProbabilityThreshold", "SpamHandling",   "Languages",
      "install_updates_time", "install_updates_day",      "wanted_updates", "LogLevel"};
  for (const char* value : {"\"\"", "3", R"({"time":"2012-01-01T00:00:00Z"})"}) {
    std::string items;
    for (const std::string& name : names) {
      items += (items.empty() ? "\"" : ",\"") + name + "\":" + value;
    }
    EXPECT_EQ(rowsBeside(items), std::vector<std::string>()) << value;
  }
}

TEST_F(Configuration, EachItemGivesItsRows) {
  const std::string days = R"("install_updates_time":{"time":"2012-01-01T04:30:00Z"},)";
  const std::string check = "Languagefilter action: Check for SPAM=";
  const std::string move = "Languagefilter action: Move to Quellbright-folder=";
  const std::string remove = "Languagefilter action: Delete=";
  const struct {
    std::string items;
    std::vector<std::string> expected;
  } table[] = {
      {R"("ConfigurationName":"Jörg")", {"ConfigurationName=J\xc3\xb6rg"}},
      {R"("SpamProbabilityThreshold":"3")",
       {"SPAM probability threshold=3", "SPAM threshold: =High", "SPAM threshold actual:=65"}},
      {R"("SpamProbabilityThreshold":"Medium")", {"SPAM probability threshold=Medium"}},
      {R"("SpamHandling":"D")", {"Delete  if SPAM, otherwise move to Quellbright folder=Yes"}},
      {R"("SpamHandling":"d")", {}},
      {R"("SpamHandling":"M")", {}},
      {R"("LanguageFilterHandling":"M")", {}},
      {R"("Languages":"German","LanguageFilterHandling":"M")",
       {"Languages for language filter=German", check + "No", move + "Yes", remove + "No"}},
      {R"("Languages":["German","x"],"LanguageFilterHandling":"D")",
       {"Languages for language filter=German, x", check + "No", move + "No", remove + "Yes"}},
      {R"("Languages":["",""],"LanguageFilterHandling":["D"])",
       {"Languages for language filter=, ", check + "No", move + "No", remove + "No"}},
      {days + R"("install_updates_day":["1","4","9"])",
       {"Update day(s)=Sunday, Wednesday, ", "Update hour=4"}},
      {days + R"("install_updates_day":"7","wanted_updates":["2","1","3"])",
       {"Update day(s)=Saturday", "Update hour=4",
        "Components to update=Domino Module, Scanning Engine, "}},
      {days + R"("wanted_updates":["2"])", {}},
      {R"("install_updates_day":"7","wanted_updates":["2"])", {}},
      {R"("install_updates_day":"7","install_updates_time":"x","wanted_updates":["2"])", {}},
      {R"("LogLevel":"4")", {"Log level=4", "Real loglevel=Debug"}},
      {R"("LogLevel":"5")", {"Log level=5", "Real loglevel=Minimal"}},
  };
  start("");
  for (const auto& [items, expected] : table) EXPECT_EQ(rowsBeside(items), expected) << items;
}

TEST_F(Configuration, LanguagesAreNumbersOrNames) {
  start(
      active({R"("Languages":["1031","German"," +7x","-3","+","2147483647","2147483648","german",)"
              R"x("Chinese (China)","0x10","- 1",""])x"}));
  rows();
  EXPECT_EQ(configuration_.filterLanguageCodes,
            (std::vector<std::int32_t>{1031, 1031, 7, -3, 0, 2147483647, 0, 0, 2052, 0, 0, 0}));
}

TEST_F(Configuration, LayoutIsReckonedOverTheRowsOfAllActiveNotes) {
  start(active({R"("ConfigurationName":"A")", R"("ConfigurationName":"B")"}));
  EXPECT_EQ(rows().size(), 2 * bare.size());
  const std::u16string report = configuration_.report();
  EXPECT_NE(report.find(u"\r\n\tReal loglevel" + std::u16string(43, u'.') +
                        u": Normal\r\n\tConfigurationName" + std::u16string(39, u'.') + u": B\r\n"),
            std::u16string::npos);
  EXPECT_NE(report.find(u"Quellbright folder...: No\r\n"), std::u16string::npos);
}

TEST_F(Configuration, DaysOfAnEarlierNoteStayUntilOneCannotBeRead) {
  const std::string first =
      R"("install_updates_day":"2","install_updates_time":{"time":"2012-01-01T04:30:00Z"},)"
      R"("wanted_updates":"1")";
  const std::vector<std::string> days = {"Update day(s)=Monday", "Update hour=4"};
  const std::string components = "Components to update=Scanning Engine";
  const struct {
    std::string second;
    std::size_t dayRows, componentRows;
  } table[] = {
      {"", 2, 1},                              // its components are missing
      {R"("wanted_updates":"1")", 2, 2},       //
      {R"("install_updates_day":"3")", 2, 1},  //
      {R"("wanted_updates":"1","install_updates_day":"3","install_updates_time":"x")", 1, 2},
  };
  start("");
  for (const auto& row : table) {
    writeDatabase("QBConf.nsf", active({first, row.second}));
    const std::vector<std::string> all = rows();
    for (const std::string& day : days) {
      EXPECT_EQ(std::count(all.begin(), all.end(), day), row.dayRows) << row.second;
    }
    EXPECT_EQ(std::count(all.begin(), all.end(), components), row.componentRows) << row.second;
  }
}

TEST_F(Configuration, EachFailedCallShowsAsItsChainOrAsDefaults) {
  const std::u16string load = u"error: Configuration load failed: Could not read configuration: ";
  const std::u16string database =
      u"error: Could not open or read configuration database \"QBConf.nsf\". Check that the file "
      u"exists: ";
  const struct {
    const char* operation;
    int number;
    std::u16string expected;  // the error; where there is none, the last row
  } table[] = {
      {"NSFDbOpen", 1, database + openFailure},
      {"NSFDbOpen", 2, load + openFailure},
      {"NSFFormulaCompile", 1,
       load + u"Could not compile configuration-search-formula: " + unknown},
      {"NSFSearch", 1, load + u"Could not complete search for configuration: " + unknown},
      {"NSFDbOpen", 3, load + openFailure},
      {"NSFNoteOpen", 1, u"Real loglevel=Normal"},
      {"NSFItemInfo", 2, u"Real loglevel=Debug"},
      {"TimeGMToLocal", 1, u"Real loglevel=Debug"},
      {"NSFNoteClose", 1, u"Real loglevel=Debug"},
      {"NSFDbClose", 1, load + closeFailure},
      {"NSFDbClose", 2, load + closeFailure},
      {"NSFDbClose", 3, database + closeFailure},
  };
  start(active({R"("LogLevel":"4","install_updates_day":"2","wanted_updates":"1",)"
                R"("install_updates_time":{"time":"2012-01-01T04:30:00Z"})"}));
  for (const auto& row : table) {
    fail(row.operation, row.number);
    EXPECT_EQ(rows().back(), narrow(row.expected)) << row.operation << row.number;
    EXPECT_EQ(recorder().counts["OSMemFree"], recorder().counts["NSFFormulaCompile"])
        << "the formula is freed on every path";
  }
  // No item that fails stops the load, whichever of the questions for it that is.
  fail("", 0);
  rows();
  const int questions = recorder().counts["NSFItemInfo"];
  for (int number = 1; number <= questions; ++number) {
    fail("NSFItemInfo", number);
    EXPECT_TRUE(rows().back().starts_with("Real loglevel=")) << number;
  }
}

TEST_F(Configuration, RefreshLoadsOnceInItsInterval) {
  start(active({""}));
  VRXConfiguration configuration;
  bool reloaded = true;
  configuration.refresh(reloaded, 1'000'000);
  EXPECT_FALSE(reloaded) << "not before the defaults are set";
  configuration.initialise();
  const struct {
    std::int64_t now;
    bool expected;
  } table[] = {{899, false}, {900, true}, {900, false}, {1799, false}, {1800, true}};
  for (const auto& [now, expected] : table) {
    configuration.refresh(reloaded, now);
    EXPECT_EQ(reloaded, expected) << now;
    EXPECT_EQ(configuration.reportRows.size(), now < 900 ? 0 : bare.size()) << now;
  }
}

}  // namespace
