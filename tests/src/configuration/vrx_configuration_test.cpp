#include "configuration/vrx_configuration.h"

#include "support/notes_server.h"

namespace {

using configuration::VRXConfiguration;

class Configuration : public test::NotesServer {
 protected:
  static std::string active(const std::string& languages) {
    return R"({"note":1,"items":{"ActiveConfiguration":"Yes","Languages":)" + languages + "}}\n";
  }
};

// The report shows neither the defaults that only other modules use nor the codes.
TEST_F(Configuration, LoadIsDueBySecondsAndLeavesDefaultsAndEarlierCodes) {
  start(active(R"(["1031","German"," +7x","-3","+","2147483647","2147483648","german",)"
               R"x("Chinese (China)","0x10","- 1",""])x"));
  VRXConfiguration configuration;
  bool reloaded = true;
  configuration.refresh(reloaded, 1'000'000);
  EXPECT_FALSE(reloaded) << "not before the defaults are set";
  configuration.initialise();
  EXPECT_EQ(configuration.rejectLine, " \r\n");
  EXPECT_EQ(configuration.rejectCode, "550");
  EXPECT_EQ(configuration.serverName, "mail");
  EXPECT_EQ(configuration.dataDirectory, folder_.wide());

  std::vector<std::int32_t> codes = {1031, 1031, 7, -3, 0, 2147483647, 0, 0, 2052, 0, 0, 0};
  const struct {
    std::int64_t now;
    bool expected;
  } table[] = {{899, false}, {900, true}, {900, false}, {1799, false}, {1800, true}};
  for (const auto& [now, expected] : table) {
    configuration.refresh(reloaded, now);
    EXPECT_EQ(reloaded, expected) << now;
    EXPECT_EQ(configuration.noteRead, now >= 900) << now;
    EXPECT_EQ(configuration.reportRows.size(), now < 900 ? 0U : 11U) << now;
    if (now == 900) {
      EXPECT_EQ(configuration.filterLanguageCodes, codes);
      writeDatabase("QBConf.nsf", active("\"Thai\""));
    }
  }
  codes.push_back(1054);
  EXPECT_EQ(configuration.filterLanguageCodes, codes);
}

}  // namespace
