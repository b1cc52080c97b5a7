// The log file that a run writes: the report, and the file of the access test.
//
// Each line carries its own time stamp and the process and thread number, and is handed to the
// system when the call returns, so that a run that ends abnormally leaves all earlier lines.
// Nothing waits for the disk: what a machine loses when it goes down is another matter. No failure
// leaves this class as an exception: a file that does not open is said on the console, and opening
// is tried again at each line; a file that takes no more stays as it is. The file is Latin-1 with
// CR LF for each line feed; a line that holds a character above 255 is cut in front of it and is
// the last.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/line_bytes.h"
#include "platform/files.h"

namespace base {

/// The level of all lines but the first of a file. Smaller is more important.
inline constexpr int ordinaryLevel = 2;

class ReportLog {
 public:
  /// `logName` is the name in console lines; `timeFormat` has the notation of strftime, and
  /// those directives that every system knows. Lines of a
  /// level above `level` are dropped. Opens nothing.
  ReportLog(std::u16string directory, std::u16string logPrefix, std::u16string extension,
            std::u16string logName, std::u16string timeFormat, int level, bool echoToConsole);

  /// Opens a file that is named after the present moment, emptied if it exists, and writes
  /// "STARTING LOG". False, after a line on the console, if the file cannot be opened.
  bool open();
  void close();

  /// Whether the log takes lines of level 2; the argument does not count.
  bool isEnabled(int level) const;

  /// Writes a line of level 2 to the file, and to the console only if the log echoes.
  void write(const std::u16string& text);

  void writeLine(const std::u16string& text, bool toConsole, bool toFile, int level);

  /// The full name of the file that was last tried, and of the last that opened.
  std::u16string fileName() const { return fileName_; }
  std::u16string openedFileName() const { return openedFileName_; }

 private:
  void refreshTimeStamp();
  void writeConsoleForm(const std::u16string& text) const;
  void writeFileForm(const std::u16string& text);
  void startOverAtLimit();

  std::u16string directory_;
  std::u16string logName_;
  std::u16string extension_;
  std::u16string logPrefix_;
  std::u16string timeFormat_;
  std::u16string openedFileName_;
  std::u16string fileName_;
  bool echoToConsole_;
  platform::OutputFile file_;
  bool failed_ = false;        // the file is open and takes nothing more
  std::int64_t position_ = 0;  // where the next line lands; counted, because to ask costs a call
  std::int64_t second_ = -1;   // that of the time stamp, in seconds since 1970
  std::u16string timeStamp_;
  std::int32_t maxFileSize_;  // bytes of the file at which the next line goes to the top
  int level_;
  std::u16string numbers_;  // of process and thread, as they stand in each line
  LineBytes line_;
};

/// The report and, if it is asked for, the console beside it. The two orders are there because each
/// step of the run has its own; support people see it when a run ends in between.
struct Output {
  ReportLog& report;
  bool toConsole;

  void reportFirst(const std::u16string& text) const;
  void consoleFirst(const std::u16string& text) const;
};

}  // namespace base
