#include "configuration/vrx_configuration.h"

#include <algorithm>

#include "base/text.h"
#include "notes/domino_api_tools.h"
#include "notes/formula_search.h"
#include "notes/note_handles.h"
#include "notes/nsf_db_connection.h"
#include "platform/ascii.h"
#include "platform/clock.h"

namespace configuration {
namespace {

using base::numberToText;
using notes::NsfDbConnection;
using notes::NsfNote;
using notes::DominoApiTools::DominoApiError;
using notes::DominoApiTools::errorText;

std::u16string namesOf(DecodingTable<std::int32_t, std::u16string>& names,
                       const std::vector<std::int32_t>& numbers) {
  std::vector<std::u16string> texts;
  texts.reserve(numbers.size());
  for (const std::int32_t number : numbers) texts.push_back(lookUp(names, number));
  return listed(texts);
}

std::vector<std::int32_t> numbersOf(DecodingTable<std::u16string, std::int32_t>& numbers,
                                    const std::vector<std::u16string>& keys) {
  std::vector<std::int32_t> result;
  result.reserve(keys.size());
  for (const std::u16string& key : keys) result.push_back(lookUp(numbers, key));
  return result;
}

VRXConfiguration::ConfigurationError unreadableItem(const base::Error& error) {
  return VRXConfiguration::ConfigurationError(u"Could not read item: " + error.message());
}

}  // namespace

void VRXConfiguration::initialise() {
  tables.fill();
  profileInformationFile = u"profile-information.ini";
  scanEngineFile = u"qbse.dll";
  scanGatewayFile = u"qbsg.dll";
  backendHost = u"localhost";
  // "Content-Transfer-Type" is no usual header, and is the one that the add-on looks for.
  inspectedHeaders = {"Received",
                      "To",
                      "CC",
                      "From",
                      "Subject",
                      "Content-Type",
                      "Content-Transfer-Type",
                      "Content-Disposition",
                      "Content-ID",
                      "Message-ID",
                      "X-MimeOLE"};
  mailProcesses = {u"nsmtp.exe"};
  routerProcess = u"nrouter.exe";
  // The line is made while both of its parts are still empty: the add-on's own default is the bare
  // blank and line end.
  rejectLine = rejectCode + " " + rejectText + "\r\n";
  setNumbers();
  setTexts();
  dataDirectory = notes::DominoApiTools::dataDirectory();
  notes::DominoApiTools::readEnvironment("ServerName", serverName);
  ready = true;
}

void VRXConfiguration::setNumbers() {
  timing1 = 900;
  timing2 = 3600;
  timing3 = 7200;
  timing4 = 3480;
  timing5 = 604800;
  timing6 = 8640;
  timing7 = 8640;
  timing8 = 900;
  timing9 = 900;
  numberSetting = 50;
  refreshSeconds = 900;
  flagB = true;
  flagC = true;
}

void VRXConfiguration::setTexts() {
  configurationName = u"Default";
  logLevelText = u"2";
  spamThresholdText = u"medium";
  rejectCode = "550";
  rejectText = "Message rejected by Quellbright";
  logDateFormat = u"%d-%m-%Y %H:%M:%S";
  logNameFirst = u"Quellbright";
  logNameSecond = u"Quellbright";
  logExtension = u".log";
}

void VRXConfiguration::refresh(bool& reloaded) { refresh(reloaded, platform::currentTime()); }

void VRXConfiguration::refresh(bool& reloaded, std::int64_t now) {
  reloaded = false;
  if (!ready || now - lastRead < refreshSeconds) return;
  try {
    // It does no work: it proves that the database opens.
    NsfDbConnection connection(notes::configurationDatabase);
    readActiveConfiguration();
    lastRead = now;
    reloaded = true;
    connection.close();
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw ConfigurationError(std::u16string(u"Could not open or read configuration database \"") +
                             notes::configurationDatabaseWide +
                             u"\". Check that the file exists: " + error.message());
  } catch (const ConfigurationError& error) {
    throw ConfigurationError(u"Configuration load failed: " + error.message());
  }
}

// Fields keep the value they have until an item overwrites it.
void VRXConfiguration::readActiveConfiguration() {
  const auto failure = [](const base::Error& error) {
    return ConfigurationError(u"Could not read configuration: " + error.message());
  };
  reportRows.clear();
  try {
    NsfDbConnection connection(notes::configurationDatabase);
    searchActiveNotes(connection);
    connection.close();
  } catch (const ConfigurationError& error) {
    throw failure(error);
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw failure(error);
  }
}

void VRXConfiguration::searchActiveNotes(const NsfDbConnection& connection) {
  notes::CompiledFormula formula(notes::AfterSearch::free);
  const char16_t* failure = u"Could not compile configuration-search-formula: ";
  STATUS status = formula.compile(R"(SELECT ActiveConfiguration ="Yes")");
  if (status == 0) {
    failure = u"Could not complete search for configuration: ";
    status = notes::searchNotes(connection, formula, "Configurations",
                                [this](NOTEID id) { return readActiveNote(id); });
  }
  // Given back before the library is asked for words.
  formula.free();
  if (status != 0) throw ConfigurationError(failure + errorText(status));
}

// A note that does not open reads as one without items, so that its rows show the defaults; one
// that does not close has been read all the same.
STATUS VRXConfiguration::readActiveNote(NOTEID id) {
  NsfDbConnection connection(notes::configurationDatabase);
  notes::OpenNote note;
  note.open(connection, id);
  const STATUS status = readNote(note.handle());
  note.close();
  connection.close();
  return status;
}

STATUS VRXConfiguration::readNote(NOTEHANDLE handle) {
  const NsfNote note(handle);
  ItemReader items(note, reportRows);
  items.readText("ConfigurationName", u"Default", configurationName, u"ConfigurationName");
  readSpam(items);
  readLanguageFilter(items);
  // Where these cannot be read, their rows are missing, and nothing else says so.
  try {
    readUpdates(items);
  } catch (const ConfigurationError&) {  // NOLINT(bugprone-empty-catch)
  }
  try {
    readComponents(items);
  } catch (const ConfigurationError&) {  // NOLINT(bugprone-empty-catch)
  }
  readLogLevel(items);
  noteRead = true;
  return 0;
}

// "medium", the default, is no key of the tables: its number is 0 and its name empty.
void VRXConfiguration::readSpam(ItemReader& items) {
  items.readText("SpamProbabilityThreshold", u"medium", spamThresholdText,
                 u"SPAM probability threshold");
  // The row above shows the setting as it is stored; the tables know small letters.
  for (char16_t& unit : spamThresholdText) unit = platform::lowered(unit);
  spamThresholdActual = lookUp(tables.thresholdNumbers, spamThresholdText);
  items.addRow(u"SPAM threshold: ", lookUp(tables.thresholdNames, spamThresholdText));
  items.addRow(u"SPAM threshold actual:", numberToText(spamThresholdActual));
  items.readChoice("SpamHandling", false, deleteSpam,
                   u"Delete  if SPAM, otherwise move to Quellbright folder", {u"D", u"M"});
}

void VRXConfiguration::readLanguageFilter(ItemReader& items) {
  items.readList("Languages", filterLanguages, u"Languages for language filter");
  if (filterLanguages.empty()) return;
  convertLanguages();
  constexpr const char* handling = "LanguageFilterHandling";
  // An item never holds the empty text and a value at once, so that no stored value switches the
  // first of these on.
  items.readChoice(handling, false, languageCheckForSpam, u"Languagefilter action: Check for SPAM",
                   {u"", u"N"});
  items.readChoice(handling, false, languageMoveToFolder,
                   u"Languagefilter action: Move to Quellbright-folder", {u"M", u""});
  items.readChoice(handling, false, languageDelete, u"Languagefilter action: Delete", {u"D", u""});
}

// Codes of an earlier note stay.
void VRXConfiguration::convertLanguages() {
  for (const std::u16string& language : filterLanguages) {
    const std::optional<std::int32_t> code = base::leadingInteger(language);
    filterLanguageCodes.push_back(code ? *code : lookUp(tables.languageCodes, language));
  }
}

// Days that a note before this one had stay, with their rows, where this one says nothing.
void VRXConfiguration::readUpdates(ItemReader& items) {
  try {
    readUpdateItems(items.note());
  } catch (const DominoApiError& error) {
    updateDays.clear();
    throw unreadableItem(error);
  } catch (const NsfNote::DominoApiError& error) {
    throw unreadableItem(error);
  } catch (const NsfNote::NsfNoteError& error) {
    throw unreadableItem(error);
  }
  if (updateDays.empty()) return;
  items.addRow(u"Update day(s)", namesOf(tables.dayNames, updateDays));
  items.addRow(u"Update hour", numberToText(updateHour));
}

void VRXConfiguration::readUpdateItems(const NsfNote& note) {
  constexpr const char* dayItem = "install_updates_day";
  constexpr const char* timeItem = "install_updates_time";
  if (!note.hasValue(dayItem) || !note.hasValue(timeItem)) return;
  std::vector<std::u16string> days;
  note.getTextList(dayItem, days, true);
  const TIMEDATE time = note.getTime(timeItem);
  updateDays = numbersOf(tables.dayNumbers, days);
  updateHour = notes::DominoApiTools::timeToParts(time).hour;
}

void VRXConfiguration::readComponents(ItemReader& items) {
  try {
    readComponentItem(items.note());
  } catch (const DominoApiError& error) {
    throw unreadableItem(error);
  } catch (const NsfNote::DominoApiError& error) {
    throw unreadableItem(error);
  } catch (const NsfNote::NsfNoteError& error) {
    throw unreadableItem(error);
  }
  if (wantedUpdates.empty() || updateDays.empty()) return;
  items.addRow(u"Components to update", namesOf(tables.componentNames, wantedUpdates));
}

void VRXConfiguration::readComponentItem(const NsfNote& note) {
  std::vector<std::u16string> wanted;
  note.getTextList("wanted_updates", wanted, true);
  wantedUpdates = numbersOf(tables.componentKeys, wanted);
}

void VRXConfiguration::readLogLevel(ItemReader& items) {
  items.readText("LogLevel", u"2", logLevelText, u"Log level");
  logLevelNumber = lookUp(tables.logLevelNumbers, logLevelText);
  items.addRow(u"Real loglevel", lookUp(tables.logLevelNames, logLevelNumber));
}

std::u16string VRXConfiguration::report() const {
  constexpr std::size_t shortestDots = 3;
  std::size_t longest = 0;
  for (const ReportRow& row : reportRows) longest = std::max(longest, row.label.size());
  std::u16string text = u"\r\n\n\tQUELLBRIGHT CONFIGURATION";
  for (const auto& [label, value] : reportRows) {
    text += u"\r\n\t" + label;
    text.append(longest - label.size() + shortestDots, u'.');
    text += u": " + value;
  }
  return text + u"\r\n";
}

}  // namespace configuration
