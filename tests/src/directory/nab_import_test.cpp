#include "directory/nab_import.h"

#include <stdexcept>

#include "support/notes_server.h"
#include "support/rows.h"

namespace {

using directory::NAB::NabImport;

// All databases have this replica id.
const std::string profile =
    R"({"note":7,"items":{"Form":"qbProfile","REPLICAID":"001234560000ABCD")";

// Imports that write, which a run of the tool does not make.
class Import : public test::NotesServer {
 protected:
  void startWith(const std::string& configuration, const std::string& mailFile = "m.nsf") {
    start(configuration);
    writeDatabase("m.nsf", "");
    writeDatabase("names.nsf", R"({"note":1,"items":{"Type":"Person","MailServer":"mail",)"
                               R"("FullName":["A","B"],"MailFile":")" +
                                   mailFile + "\"}}\n");
  }

  // Loads the directory and takes up its one entry. The messages, and how often a profile was
  // created and updated.
  static std::string imported(NabImport& nabImport) {
    nabImport.step();
    EXPECT_FALSE(nabImport.done());
    nabImport.step();
    EXPECT_TRUE(nabImport.done());
    const auto& result = nabImport.result();
    EXPECT_EQ(result.processed, 1);
    std::string text;
    for (const std::u16string& message : result.messages) text += narrow(message) + ' ';
    return text + std::to_string(result.created) + ' ' + std::to_string(result.updated);
  }

  NabImport import_{1, u"mail", true, false};
};

TEST_F(Import, ProfilesAreCreatedOnceAndThenUpdated) {
  startWith(R"({"note":1,"profile":"qbdefaultprofile","items":{"FilterSetting":"1"}})"
            "\n");
  const std::string before = database();
  EXPECT_EQ(imported(import_), "1 0");
  EXPECT_EQ(database(),
            before + "{\"note\":2,\"items\":{\"FilterSetting\":\"1\"," +
                R"("FULLNAME":"AB","Form":"qbProfile","Type":"Person",)"
                R"("REPLICAID":"001234560000ABCD","NAME":"T","Server":"mail","FilePath":"m.nsf",)"
                R"("Subject":"T"}})"
                "\n");
  EXPECT_EQ(imported(import_), "0 1");
  // The filter setting of a profile that is there is its owner's, and the last of two counts.
  writeDatabase("QBConf.nsf", profile + "}}\n" + R"({"note":8,"items":{"Form":"QBPROFILE",)" +
                                  R"("REPLICAID":"001234560000ABCD"}})" + "\n");
  const std::string twice = database();
  EXPECT_EQ(imported(import_), "0 1");
  const std::string added = database().substr(twice.size());
  EXPECT_TRUE(added.starts_with("{\"note\":8,")) << added;
  EXPECT_EQ(added.find("FilterSetting"), std::string::npos);
}

TEST_F(Import, EachLoadStartsItsListsAnewAndTellsWhetherItLeftLines) {
  startWith("");
  for (int load = 0; load < 2; ++load) {
    EXPECT_TRUE(import_.step());
    std::u16string text;
    import_.print(text, 0);
    EXPECT_EQ(narrow(text),
              "\n\nADDRESSBOKS:\nComplete path (names.nsf), Port (), Server (), File (names.nsf)"
              "\nMESSAGES\nSpecial setting - use names.nsf exclusively.\n\nIMPORT RESULT:0"
              "\nProcessed.: 0\nFailed....: 0\nUpdated...: 0\nCreated...: 0\nMESSAGES:");
    EXPECT_TRUE(import_.step());
  }
  writeDatabase("names.nsf", "{\"note\":1,\"items\":{\"Type\":\"Person\"}}\n");
  EXPECT_FALSE(import_.step()) << "no name is an error of the entry";
}

TEST_F(Import, MailFileShorterThanAnEndingIsAnErrorOfTheProgram) {
  startWith("", "xx");
  import_.step();
  EXPECT_THROW(import_.step(), std::out_of_range);
}

TEST_F(Import, EachFailedCallOfAWriteShowsAsItsChain) {
  startWith("");
  for (const auto& [where, fields] : test::rowsOf("src/directory/failed_writes.txt", 4)) {
    writeDatabase("QBConf.nsf", fields[0] == "there" ? profile + "}}\n" : "");
    fail(fields[1], std::stoi(fields[2]));
    EXPECT_EQ(imported(import_), fields[3]) << where;
  }
}

}  // namespace
