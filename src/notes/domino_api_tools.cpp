#include "notes/domino_api_tools.h"

#include "base/text.h"
#include "notes/api.h"
#include "notes/library_text.h"
#include "notes/nsf_db_connection.h"

namespace notes::DominoApiTools {
namespace {

// With these settings the library reads a time as year, month, day, hours, minutes and seconds.
constexpr WORD timeFlags = NUMBER_LEADING_ZERO | CLOCK_24_HOUR | DATE_YMD;
constexpr TFMT timeFormat{4, 0, 0, 2};  // full date, full time, no zone, date and time
constexpr WORD timeTextSize = NOTES_TIME_TEXT_SIZE;

void copySeparator(char (&destination)[5], char separator) {
  destination[0] = separator;
  for (std::size_t rest = 1; rest < sizeof destination; ++rest) destination[rest] = '\0';
}

std::u16string hexDigits(std::uint64_t number) {
  std::u16string digits(16, u'0');
  for (auto digit = digits.rbegin(); number != 0; number >>= 4) {
    *digit++ = u"0123456789ABCDEF"[number & 0xF];
  }
  return digits;
}

}  // namespace

std::u16string errorText(STATUS status) {
  return base::toWideFromLocal(errorTextNarrow(status).c_str());
}

std::string errorTextNarrow(STATUS status) {
  TextBuffer<NOTES_ERROR_TEXT_SIZE> text;
  OSLoadString(nullptr, status & NOTES_ERROR_MASK, text.data(), NOTES_ERROR_TEXT_SIZE);
  return text.data();
}

std::u16string replicaId(DBHANDLE db) {
  DBREPLICAINFO info{};
  const STATUS status = NSFDbReplicaInfoGet(db, &info);
  if (status != 0) {
    throw DominoApiToolsError(u"Could not retrieve replica information: " + errorText(status));
  }
  return hexDigits(std::uint64_t{info.ID.Innards[1]} << 32 | info.ID.Innards[0]);
}

std::u16string databaseTitle(DBHANDLE db) {
  TextBuffer<NOTES_DBINFO_SIZE> info;
  const STATUS status = NSFDbInfoGet(db, info.data());
  if (status != 0) throw DominoApiError(errorText(status));
  TextBuffer<NOTES_TITLE_SIZE> title;
  NSFDbInfoParse(info.data(), INFOPARSE_TITLE, title.data(), NOTES_TITLE_SIZE);
  return base::toWideFromUtf7(title.data());
}

std::u16string directoryReplicaId() {
  const auto failure = [](const base::Error& error) {
    return DominoApiToolsError(u"Could not get replicaid from names.nsf: " + error.message());
  };
  try {
    NsfDbConnection connection("names.nsf");
    std::u16string id = replicaId(connection.handle());
    connection.close();
    return id;
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw failure(error);
  } catch (const DominoApiToolsError& error) {
    throw failure(error);
  }
}

void timeDateFromText(const std::string& text, TIMEDATE& time) {
  INTLFORMAT settings{};
  OSGetIntlSettings(&settings, sizeof settings);
  settings.Flags = timeFlags;
  copySeparator(settings.DateString, '-');
  copySeparator(settings.TimeString, ':');

  // The library takes a writable text and may move the pointer to it.
  std::string copy = text;
  char* position = copy.data();
  const STATUS status =
      ConvertTextToTIMEDATE(&settings, &timeFormat, &position, timeTextSize, &time);
  if (status != 0) throw DominoApiError(u"Could not create TIMEDATE: " + errorText(status));
}

TIME timeToParts(const TIMEDATE& time) {
  TIME parts{};
  parts.GM = time;
  if (TimeGMToLocal(&parts) != 0) {
    throw DominoApiError(u"Could not convert binary date-format into it's individual components");
  }
  return parts;
}

bool readEnvironment(const std::string& name, std::string& value) {
  TextBuffer<NOTES_ENVIRONMENT_SIZE> buffer;
  const BOOL known = OSGetEnvironmentString(name.c_str(), buffer.data(), NOTES_ENVIRONMENT_SIZE);
  value = buffer.data();
  return known != 0;
}

bool readEnvironmentWide(const std::string& name, std::u16string& value) {
  std::string narrow;
  const bool known = readEnvironment(name, narrow);
  value = base::toWideFromLocal(narrow.c_str());
  return known;
}

std::u16string dataDirectory() {
  TextBuffer<NOTES_PATH_SIZE> buffer;
  OSGetDataDirectory(buffer.data());
  return base::toWideFromLocal(buffer.data());
}

std::u16string executableDirectory() {
  TextBuffer<NOTES_PATH_SIZE> buffer;
  OSGetExecutableDirectory(buffer.data());
  return base::toWideFromUtf7(buffer.data());
}

}  // namespace notes::DominoApiTools
