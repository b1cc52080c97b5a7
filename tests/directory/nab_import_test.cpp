#include "directory/nab_import.h"

#include <stdexcept>

#include "directory/recipient_profiles.h"
#include "support/notes_server.h"

namespace {

using directory::NAB::NabImport;

const std::string unknown = "Unknown status 0x2BAD";
const std::string openFailure = "Could not open the database: QBConf.nsf: " + unknown + ".";
const std::string closeFailure = "Could not close connection to the database: " + unknown + ".";
const std::string noItem = " is not present in Note.";

// All databases have this replica id.
const std::string replicaId = "001234560000ABCD";

const std::string defaultProfile =
    R"({"note":1,"profile":"qbdefaultprofile","items":{"FilterSetting":"1"}})"
    "\n";

class Import : public test::NotesServer {
 protected:
  static std::string note(int id, const std::string& items) {
    return "{\"note\":" + std::to_string(id) + ",\"items\":{" + items + "}}\n";
  }

  static std::string person(int id, const std::string& mailFile = "m.nsf") {
    return note(id, R"("Type":"Person","MailServer":"mail","FullName":["A","B"],"MailFile":")" +
                        mailFile + "\"");
  }

  void startWith(const std::string& directory, const std::string& configuration = {}) {
    start(configuration);
    writeDatabase("names.nsf", directory);
    writeDatabase("m.nsf", "");
    writeDatabase("mail.nsf", "");
  }

  // The text of a step without the address books, its lines without two tabs.
  static std::string textOf(const NabImport& nabImport) {
    std::string text = narrow(nabImport.print(2));
    text.erase(0, text.find("MESSAGES") + 8);
    for (std::size_t at = 0; (at = text.find("\n\t\t", at)) != std::string::npos; ++at) {
      text.erase(at + 1, 2);
    }
    return text;
  }

  static std::string result(int processed, const std::string& messages = {}, int updated = 0,
                            int created = 0) {
    const std::string count = std::to_string(processed);
    return "\n\nIMPORT RESULT:" + count + "\nProcessed.: " + count +
           "\nFailed....: 0\nUpdated...: " + std::to_string(updated) +
           "\nCreated...: " + std::to_string(created) + "\nMESSAGES:" + messages;
  }

  static std::string entry(const std::string& type, const std::string& path,
                           const std::string& fullName) {
    return "\nDIRECTORY ENTRY:\nType............: " + type + "\nReplicaId.......: " + replicaId +
           "\nServer name.....: mail\nFilepath........: " + path +
           "\nName............: T\nFull name.......: " + fullName +
           "\nStatus..........: \nReady for import: Yes";
  }

  // What one import of everything shows: the step that loads, then that of the one batch.
  static std::string shown(bool simulate) {
    NabImport nabImport(50, u"mail", false, simulate);
    nabImport.step();
    std::string text = textOf(nabImport);
    if (nabImport.done()) return text;
    nabImport.step();
    EXPECT_TRUE(nabImport.done());
    return text + textOf(nabImport);
  }
};

TEST_F(Import, EachDocumentGivesAnEntryOrItsMessage) {
  const std::string message = "\nDirectoryEntryError: ";
  const struct {
    std::string notes;
    std::string expected;
  } table[] = {
      {"", result(0)},
      {person(1), result(0) + entry("Person", "m.nsf", "AB") + result(1)},
      // Persons stand before databases.
      {note(1, R"("Type":"Database","MailServer":"mail","MailFile":"mail","FullName":"X")") +
           person(2),
       result(0) + entry("Person", "m.nsf", "AB") + entry("Database", "mail.nsf", "") + result(2)},
      {note(1, R"("Type":"Group")") + note(2, R"("MailFile":"m.nsf")"), result(0)},
      {note(1, R"("Type":"Person","MailServer":"mail","MailFile":"mail","FullName":"")"),
       result(0) + entry("Person", "mail.nsf", "") + result(1)},
      {note(1, R"("Type":"Person","MailFile":"m.nsf")"),
       message + "Note error: Item is not present in Note." + result(0)},
      {note(1, R"("Type":"Person","MailFile":3,"FullName":"A")"),
       message +
           "Could not read directory entry: Invalid item-type \"MailFile\" : Item is not type "
           "Text." +
           result(0)},
      {note(1, R"("Type":"Database","MailServer":["mail"])"),
       message +
           "Could not read database Directory entry: Invalid item-type \"MailServer\" : Item "
           "is not type Text." +
           result(0)},
      // One list entry is enough for a match, and not a text to read.
      {note(1, R"("Type":["Person"])"),
       message +
           "Could not read directory entry: Invalid item-type \"Type\" : Item is not type "
           "Text." +
           result(0)},
  };
  startWith("");
  for (const auto& [notes, expected] : table) {
    writeDatabase("names.nsf", notes);
    EXPECT_EQ(shown(true), expected) << notes;
  }
}

TEST_F(Import, MailFilesGetTheirEndingAndShowWhyTheyDoNotOpen) {
  const std::string failed = "NSFDbOpenExtended failed (Path: mail!!";
  const std::string missing = "): The database does not exist";
  const std::pair<std::string, std::string> table[] = {
      {"", "Filepath not set."},
      {"x.NSF", failed + "x.NSF.nsf" + missing},
      {"x.ntf", failed + "x.ntf" + missing},
      {"xnsf", failed + "xnsf" + missing},
      {"é-1", failed + "\xc3\x83\xc2\xa9-1.nsf" + missing},
      {std::string(300, 'x'), "OSPathNetConstruct failed: The path has more than 255 bytes"},
  };
  startWith("");
  for (const auto& [path, message] : table) {
    writeDatabase("names.nsf", person(1, path));
    EXPECT_EQ(shown(true), result(0) + result(1, "\n\t" + message)) << path;
  }
  writeDatabase("names.nsf", person(1, "xx"));
  EXPECT_THROW(shown(true), std::out_of_range);
}

TEST_F(Import, EachFailedCallOfASimulationShowsAsItsChain) {
  const std::string directory = "\nReadDirectoryError: ";
  const std::string profile = "\nCould not load Default Recipient Profile: Could not ";
  const std::string user = "\n\tGet User By replicaId failed: Could not ";
  const struct {
    const char* operation;
    int number;
    std::string expected;
  } table[] = {
      {"NSFDbOpen", 1, profile + "load Default Profile " + openFailure + result(0)},
      {"NSFProfileOpen", 1,
       profile + "open or close Default Profile: Could not open profile: " + unknown + result(0)},
      {"NSFItemInfo", 2,
       profile + "load Default Profile: Item \"FilterSetting\"" + noItem + result(0)},
      {"NSFNoteClose", 1,
       profile + "open or close Default Profile: Could not close profile: " + unknown + result(0)},
      {"NSFDbClose", 1, profile + "load Default Profile " + closeFailure + result(0)},
      {"OSPathNetParse", 1,
       "\nAddressBooksError: Could not read entry (mail!!names.nsf)OSPathNetParse call failed: " +
           unknown + result(0)},
      {"NSFDbOpen", 2,
       directory + "Could not read directory: Could not open the database: mail!!names.nsf: " +
           unknown + "." + result(0)},
      {"NSFFormulaCompile", 1,
       directory + "Could not compile searchFormula: " + unknown + result(0)},
      {"NSFSearch", 1, directory + "Could not complete search" + unknown + result(0)},
      {"NSFNoteOpen", 1, "\nNotehandle Error: Could not open note: " + unknown + result(0)},
      // An entry whose note does not close is none.
      {"NSFNoteClose", 2, "\nNotehandle Error: Could not close note: " + unknown + result(0)},
      // Persons that were read stay although their search could not be ended.
      {"NSFDbClose", 2,
       directory + "Could not read directory: " + closeFailure + result(0) +
           entry("Person", "m.nsf", "AB") + result(1)},
      {"OSPathNetConstruct", 1, result(0) + result(1, "\n\tOSPathNetConstruct failed: " + unknown)},
      {"NSFDbOpenExtended", 1,
       result(0) + result(1, "\n\tNSFDbOpenExtended failed (Path: mail!!m.nsf): " + unknown)},
      {"NSFDbReplicaInfoGet", 1,
       result(0) + result(1,
                          "\n\tCould not read replicaId: Could not retrieve replica "
                          "information: " +
                              unknown)},
      {"NSFDbInfoGet", 1, result(0) + result(1, "\n\tCould not read dbtitle: " + unknown)},
      {"NSFDbClose", 4, result(0) + result(1, "\n\tCould not close dbconnection: " + closeFailure)},
      {"NSFDbOpen", 4,
       result(0) + result(1, user + "connect to database QBConf.nsf: " + openFailure)},
      {"NSFFormulaCompile", 3,
       result(0) +
           result(1, user + "complete search: Could not compile searchFormula: " + unknown)},
      {"NSFSearch", 3, result(0) + result(1, user + "complete search: Search failed" + unknown)},
      {"NSFDbClose", 5,
       result(0) + result(1, user + "connect to database QBConf.nsf: " + closeFailure)},
  };
  startWith(person(1), defaultProfile);
  for (const auto& row : table) {
    fail(row.operation, row.number);
    EXPECT_EQ(shown(true), row.expected) << row.operation << row.number;
    EXPECT_EQ(
        recorder().counts["NSFDbOpen"] + recorder().counts["NSFDbOpenExtended"] -
            (std::string(row.operation).starts_with("NSFDbOpen") ? 1 : 0),
        recorder().counts["NSFDbClose"] - (row.operation == std::string("NSFDbClose") ? 1 : 0))
        << row.operation << row.number;
  }
}

TEST_F(Import, BatchesDrainTheListAndCountEachForItself) {
  std::string persons;
  for (int id = 1; id <= 120; ++id) persons += person(id, id == 60 ? "" : "m.nsf");
  startWith(persons);
  const std::string before = database();
  NabImport nabImport(50, u"mail", false, true);
  EXPECT_TRUE(nabImport.step()) << "a load without messages leaves no lines";
  const std::pair<int, std::size_t> batches[] = {{50, 0U}, {50, 1U}, {20, 0U}};
  for (const auto& [processed, messages] : batches) {
    EXPECT_FALSE(nabImport.done());
    EXPECT_FALSE(nabImport.step());
    EXPECT_EQ(nabImport.result().processed, processed);
    EXPECT_EQ(nabImport.result().messages.size(), messages);
  }
  EXPECT_TRUE(nabImport.done());
  EXPECT_EQ(database(), before);
}

TEST_F(Import, ProfilesAreCreatedOnceAndThenUpdated) {
  startWith(person(1), defaultProfile);
  const std::string before = database();
  EXPECT_EQ(shown(false), result(0) + result(1, {}, 0, 1));
  const std::string items =
      R"("FULLNAME":"AB","Form":"qbProfile","Type":"Person","REPLICAID":"001234560000ABCD",)"
      R"("NAME":"T","Server":"mail","FilePath":"m.nsf","Subject":"T")";
  EXPECT_EQ(database(),
            before + "{\"note\":2,\"items\":{\"FilterSetting\":\"1\"," + items + "}}\n");
  EXPECT_EQ(shown(false), result(0) + result(1, {}, 1, 0));
  // The filter setting of a profile that is there is its owner's.
  writeDatabase("QBConf.nsf", note(7, R"("Form":"QBPROFILE","REPLICAID":"001234560000ABCD")") +
                                  note(8, R"("Form":"qbProfile","REPLICAID":"001234560000ABCD")"));
  const std::string twice = database();
  EXPECT_EQ(shown(false), result(0) + result(1, {}, 1, 0));
  const std::string added = database().substr(twice.size());
  EXPECT_TRUE(added.starts_with("{\"note\":8,")) << "the last of two: " << added;
  EXPECT_EQ(added.find("FilterSetting"), std::string::npos);
}

TEST_F(Import, EachFailedCallOfAWriteShowsAsItsChain) {
  const struct {
    const char* operation;
    int number;
    std::string created, updated;  // the messages
    int count;                     // how often the profile counts as written
  } table[] = {
      {"NSFDbOpen", 5, "DBConnection error: " + openFailure, "DBConnection error: " + openFailure,
       0},
      {"NSFNoteCreate", 1, "Could not create note: " + unknown, "", 0},
      {"NSFNoteOpen", 2, "", "NoteHandle error: Could not open note: " + unknown, 0},
      {"NSFItemSetText", 1, unknown, "Could not add item to note: " + unknown, 0},
      {"NSFItemSetText", 8, "Could not add item to note: " + unknown,
       "Could not add item to note: " + unknown, 0},
      {"NSFNoteUpdate", 1, "NoteHandle error: Coule not update note" + unknown,
       "NoteHandle error: Coule not update note" + unknown, 1},
      {"NSFNoteClose", 3, "NoteHandle error: Could not close note: " + unknown,
       "NoteHandle error: Could not close note: " + unknown, 1},
      {"NSFDbClose", 6, "DBConnection error: " + closeFailure,
       "DBConnection error: " + closeFailure, 1},
  };
  for (const bool exists : {false, true}) {
    startWith(person(1));
    for (const auto& row : table) {
      const std::string& message = exists ? row.updated : row.created;
      if (message.empty()) continue;
      writeDatabase("QBConf.nsf",
                    exists ? note(1, R"("Form":"qbProfile","REPLICAID":"001234560000ABCD")") : "");
      fail(row.operation, row.number);
      EXPECT_EQ(
          shown(false),
          result(0) + result(1, (exists ? "\n\tUpdate error: " : "\n\tCreate error: ") + message,
                             exists ? row.count : 0, exists ? 0 : row.count))
          << row.operation << row.number;
    }
    notes::NotesTerm();
  }
}

TEST_F(Import, FilteredUsersAreCountedByFormAndSetting) {
  start(note(1, R"("Form":"qbProfile","FilterSetting":"1")") +
        note(2, R"("Form":"QBPROFILE","FilterSetting":"1")") +
        note(3, R"("Form":"qbProfile","FilterSetting":"0")") + note(4, R"("Form":"qbProfile")") +
        note(5, R"("Form":"qbEvent","FilterSetting":"1")"));
  const auto counted = [] {
    std::uint32_t count = 0;
    try {
      directory::countFilteredUsers(count);
    } catch (const directory::UserCountError& error) {
      return narrow(error.message());
    }
    return std::to_string(count);
  };
  EXPECT_EQ(counted(), "2");
  const std::string connection = "Could not open database connection";
  const std::pair<const char*, std::string> table[] = {
      {"NSFDbOpen", connection + openFailure},
      {"NSFFormulaCompile", "Could not compile searchFormula: " + unknown},
      {"NSFSearch", "Could not complete search" + unknown},
      {"NSFDbClose", connection + closeFailure},
  };
  for (const auto& [operation, expected] : table) {
    fail(operation, 1);
    EXPECT_EQ(counted(), expected);
    EXPECT_EQ(recorder().counts["OSMemFree"], recorder().counts["NSFFormulaCompile"])
        << "the formula is freed on every path";
  }
}

}  // namespace
