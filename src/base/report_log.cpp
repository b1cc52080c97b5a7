#include "base/report_log.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <cwchar>
#include <utility>

#include "base/text.h"
#include "platform/clock.h"
#include "platform/console.h"
#include "platform/process.h"

namespace base {
namespace {

constexpr int importantLevel = 0;
constexpr int verboseLevel = 4;
constexpr std::int32_t ordinaryFileSize = 500'000;
constexpr std::int32_t verboseFileSize = 1'000'000;
constexpr std::size_t timeStampSize = 256;

// Empty if the text needs more than 255 characters.
std::u16string formattedLocalTime(const std::u16string& format, std::int64_t moment) {
  const std::wstring wideFormat(format.begin(), format.end());
  const std::tm now = platform::localTime(moment);
  std::array<wchar_t, timeStampSize> buffer{};
  const std::size_t length = std::wcsftime(buffer.data(), buffer.size(), wideFormat.c_str(), &now);
  return {buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(length)};
}

}  // namespace

ReportLog::ReportLog(std::u16string directory, std::u16string logPrefix, std::u16string extension,
                     std::u16string logName, std::u16string timeFormat, int level,
                     bool echoToConsole)
    : directory_(std::move(directory)),
      logName_(std::move(logName)),
      extension_(std::move(extension)),
      logPrefix_(std::move(logPrefix)),
      timeFormat_(std::move(timeFormat)),
      echoToConsole_(echoToConsole),
      maxFileSize_(level == verboseLevel ? verboseFileSize : ordinaryFileSize),
      level_(level),
      numbers_(u"\t(" + numberToText(platform::processNumber()) + u":" +
               numberToText(platform::threadNumber()) + u")\t") {}

bool ReportLog::open() {
  fileName_ = directory_ + u"\\" + logPrefix_ +
              formattedLocalTime(u"%Y%m%d%H%M%S", platform::currentTime()) + extension_;
  if (!file_.open(fileName_)) {
    if (level_ >= importantLevel) {
      refreshTimeStamp();
      writeConsoleForm(u"Could not open file: " + fileName_);
    }
    return false;
  }
  openedFileName_ = fileName_;
  position_ = file_.position();
  failed_ = position_ < 0;
  if (level_ >= importantLevel) {
    refreshTimeStamp();
    writeFileForm(u"STARTING LOG");
  }
  return true;
}

void ReportLog::close() { file_.close(); }

bool ReportLog::isEnabled(int /*level*/) const { return level_ >= ordinaryLevel; }

void ReportLog::write(const std::u16string& text) { writeLine(text, false, true, ordinaryLevel); }

void ReportLog::writeLine(const std::u16string& text, bool toConsole, bool toFile, int level) {
  if (level > level_) return;
  refreshTimeStamp();
  if (toConsole || echoToConsole_) writeConsoleForm(text);
  if (toFile) writeFileForm(text);
}

void ReportLog::refreshTimeStamp() {
  const std::int64_t now = platform::currentTime();
  if (now == second_) return;
  second_ = now;
  timeStamp_ = formattedLocalTime(timeFormat_, now);
}

void ReportLog::writeConsoleForm(const std::u16string& text) const {
  platform::printWideLine(timeStamp_ + u"   " + logName_ + u": " + text);
}

void ReportLog::writeFileForm(const std::u16string& text) {
  if (!file_.isOpen()) {
    // The line itself is lost: the file that this opens has "STARTING LOG" as its only line.
    open();
    return;
  }
  if (failed_) return;
  line_.clear();
  line_.append(timeStamp_);
  line_.append(numbers_);
  line_.append(text);
  line_.append(u"\n");
  startOverAtLimit();
  failed_ = failed_ || !file_.write(line_.bytes()) || line_.isCut();
  position_ += static_cast<std::int64_t>(line_.bytes().size());
}

// What lies behind the lines at the top stays: the file is not shortened.
void ReportLog::startOverAtLimit() {
  if (position_ < maxFileSize_) return;
  position_ = 0;
  failed_ = !file_.moveTo(0);
}

void Output::reportFirst(const std::u16string& text) const {
  if (report.isEnabled(ordinaryLevel)) report.write(text);
  if (toConsole) platform::printWideLine(text);
}

void Output::consoleFirst(const std::u16string& text) const {
  if (toConsole) platform::printWideLine(text);
  if (report.isEnabled(ordinaryLevel)) report.write(text);
}

}  // namespace base
