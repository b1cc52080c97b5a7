// The settings with which the add-on runs on this server.
//
// Defaults come first; the active notes of the configuration database, usually one, then override
// those fields that have an item, in the order in which the library delivers the notes. Reading is
// tolerant: an item that is missing or not readable never stops the load, and the rows of the
// report show what is in use. Fields named spare, flag, timing and the like stand unread: they are
// the settings of the add-on's other modules, and this is the one place that tells their defaults.
//
// To add an item: a field, a call of a reader in readNote or one of its steps, and with it the
// label of its row.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/error.h"
#include "configuration/decoding_tables.h"
#include "configuration/item_reader.h"
#include "notes/abi.h"
#include "notes/nsf_db_connection.h"

namespace configuration {

// One object, whose fields keep the add-on's own order, whatever room that costs.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
class VRXConfiguration {
 public:
  class ConfigurationError : public base::Error {
   public:
    using Error::Error;
  };

  /// Sets the defaults. To be called once, before anything else.
  void initialise();

  /// Loads the active notes if the last load is at least `refreshSeconds` ago; `reloaded` tells
  /// whether it did. Raises ConfigurationError. `now` is in seconds since 1970; without it the
  /// present moment counts.
  void refresh(bool& reloaded);
  void refresh(bool& reloaded, std::int64_t now);

  /// The section of the report: a title and the rows of all notes that were read, their values in
  /// one column.
  std::u16string report() const;

  std::u16string dataDirectory;
  std::u16string profileInformationFile;
  std::string serverName;
  std::string spareName;
  std::u16string scanEngineFile;
  std::u16string scanGatewayFile;
  std::u16string backendHost;
  std::vector<std::string> inspectedHeaders;
  std::vector<std::string> spareHeaders;
  std::u16string routerProcess;
  std::vector<std::u16string> mailProcesses;
  bool noteRead = false;
  std::u16string configurationName;
  bool flagA = false;
  bool flagB = false;
  std::u16string spareText;
  std::int32_t logLevelNumber = 0;
  std::u16string logLevelText;
  std::vector<std::u16string> spareList;
  std::u16string spamThresholdText;
  bool deleteSpam = false;
  std::int32_t spamThresholdActual = 0;  // per cent
  std::string rejectCode;
  std::string rejectText;
  std::string rejectLine;
  std::vector<std::u16string> filterLanguages;
  std::vector<std::int32_t> filterLanguageCodes;
  bool languageCheckForSpam = false;
  bool languageMoveToFolder = false;
  bool languageDelete = false;
  std::u16string logDateFormat;
  std::u16string logNameFirst;   // the name of the add-on's logs
  std::u16string logNameSecond;  // the first part of the names of their files
  std::u16string logExtension;
  std::int32_t timing1 = 0;
  std::int32_t timing2 = 0;
  std::int32_t timing3 = 0;
  std::int32_t timing4 = 0;
  std::int32_t timing5 = 0;
  std::int32_t timing6 = 0;
  std::int32_t timing7 = 0;
  std::int32_t timing8 = 0;
  std::vector<std::int32_t> updateDays;  // 1 is Sunday
  std::int32_t updateHour = 0;           // in the server's local time
  std::vector<std::int32_t> wantedUpdates;
  std::int32_t numberSetting = 0;
  bool flagC = false;
  std::vector<ReportRow> reportRows;
  DecodingTables tables;
  std::int32_t timing9 = 0;
  std::u16string spareText2;
  std::u16string spareText3;
  std::u16string spareText4;
  std::int64_t lastRead = 0;  // seconds since 1970
  std::int32_t refreshSeconds = 0;
  bool ready = false;

 private:
  void setNumbers();
  void setTexts();
  void readActiveConfiguration();
  void searchActiveNotes(const notes::NsfDbConnection& connection);
  STATUS readActiveNote(NOTEID id);
  STATUS readNote(NOTEHANDLE handle);
  void readSpam(ItemReader& items);
  void readLanguageFilter(ItemReader& items);
  void convertLanguages();
  void readUpdates(ItemReader& items);
  void readUpdateItems(const notes::NsfNote& note);
  void readComponents(ItemReader& items);
  void readComponentItem(const notes::NsfNote& note);
  void readLogLevel(ItemReader& items);
};

}  // namespace configuration
