#include "report/report_files.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "report/files.h"
#include "report/output.h"

namespace reader {
namespace {

namespace fs = std::filesystem;

// Names are UTF-8 on Windows and bytes elsewhere, and a path takes either from this type.
fs::path pathOf(const std::string& name) { return {std::u8string(name.begin(), name.end())}; }

bool isNameOfReport(const std::string& name) {
  return name.find("-DIAGNOSTIC-") != std::string::npos && name.ends_with(".log");
}

}  // namespace

std::unique_ptr<Report> readReport(const std::string& name) {
  try {
    return std::make_unique<Report>(bytesOf(name));
  } catch (const NoReport& error) {
    throw Failure(name, error.what());
  }
}

std::string lastPartOf(const std::string& name) {
  const fs::path path = pathOf(name);
  const fs::path last = path.has_filename() ? path.filename() : path.parent_path().filename();
  const std::u8string text = last.u8string();
  return text.empty() ? name : std::string(text.begin(), text.end());
}

ReportFiles::ReportFiles(const std::vector<std::string>& names) : areNamed_(names.size() > 1) {
  for (const std::string& name : names) {
    std::error_code error;
    if (name != "-" && fs::is_directory(pathOf(name), error)) {
      areNamed_ = true;
      addFolder(name);
    } else {
      files_.push_back({name, ""});
    }
  }
}

void ReportFiles::addFolder(const std::string& name) {
  std::vector<std::string> found;
  std::error_code error;
  for (fs::directory_iterator at(pathOf(name), error), end; !error && at != end;
       at.increment(error)) {
    const std::u8string file = at->path().filename().u8string();
    std::error_code ignored;
    if (isNameOfReport({file.begin(), file.end()}) && !at->is_directory(ignored))
      found.emplace_back(file.begin(), file.end());
  }
  if (error) {
    const bool isDenied = error == std::errc::permission_denied;
    files_.push_back(
        {name, failureOf(isDenied ? platform::FileOutcome::denied : platform::FileOutcome::failed,
                         "read")});
  } else if (found.empty()) {
    files_.push_back({name, "the folder holds no report, as *-DIAGNOSTIC-*.log"});
  }
  std::ranges::sort(found);
  for (const std::string& file : found)
    files_.push_back({std::string(name).append("/").append(file), ""});
}

bool ReportFiles::forEach(const Take& take, const Miss& miss) const {
  std::size_t readCount = 0;
  for (std::size_t at = 0; at < files_.size(); ++at) {
    const File& file = files_[at];
    try {
      if (!file.failure.empty()) throw Failure(file.name, file.failure);
      take(file.name, readReport(file.name));
      ++readCount;
    } catch (const Failure& failure) {
      if (readCount == 0 && at + 1 == files_.size()) throw;
      tellFailure(failure.what());
      if (miss) miss(file.name, failure.reason());
    }
  }
  return readCount == files_.size();
}

std::vector<std::string> ReportFiles::names() const {
  std::vector<std::string> names;
  for (const File& file : files_) names.push_back(file.name);
  return names;
}

}  // namespace reader
