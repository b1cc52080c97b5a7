#include "support/world.h"

#include <algorithm>
#include <cstdlib>
#include <regex>
#include <sstream>

#include "support/folders.h"
#include "support/process.h"
#include "support/rows.h"

namespace test {
namespace {

namespace fs = std::filesystem;

const std::string reportPrefix = "Quellbright-DIAGNOSTIC-";

std::string replaced(std::string text, const std::string& pattern, const std::string& replacement) {
  for (std::size_t at = 0; (at = text.find(pattern, at)) != std::string::npos;
       at += replacement.size()) {
    text.replace(at, pattern.size(), replacement);
  }
  return text;
}

// What differs from run to run.
std::string masked(std::string text, const std::string& root) {
  static const std::pair<std::regex, const char*> masks[] = {
      {std::regex("\\d\\d-\\d\\d-\\d{4} \\d\\d:\\d\\d:\\d\\d\t\\(\\d+:\\d+\\)\t"), "<entry>\t"},
      {std::regex("\\d\\d-\\d\\d-\\d{4} \\d\\d:\\d\\d:\\d\\d( {3})"), "<time>$1"},
      // The events that the run itself writes: the documents of all worlds are older than 2020.
      {std::regex("20[2-9]\\d-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d"), "<time>"},
      {std::regex("-\\d{14}\\.log"), "-<time>.log"},
      {std::regex("Syntax: .*qbdiagnostics(\\.exe)?"), "Syntax: <program>"}};
  text = replaced(text, root, "<server>");
  for (const auto& [pattern, mask] : masks) text = std::regex_replace(text, pattern, mask);
  return text;
}

// The characters of Latin-1 as UTF-8.
std::string fromLatin1(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) text += bytesOfUnit(static_cast<unsigned char>(byte));
  return text;
}

// Puts the numbers of the report's lines in place of lines that are the same.
Lines withoutReport(const Lines& console, Lines report) {
  const std::string head = "<entry>\t";
  for (std::string& line : report) {
    line = replaced(line.substr(line.starts_with(head) ? head.size() : 0), "<CR>", "");
  }
  Lines result;
  std::size_t first = 0;
  std::size_t next = 0;
  const auto close = [&] {
    if (first == next) return;
    result.push_back("<report " + std::to_string(first + 1) + "-" + std::to_string(next) + ">");
    first = next;
  };
  for (const std::string& line : console) {
    const auto found =
        std::find(report.begin() + static_cast<std::ptrdiff_t>(next), report.end(), line);
    const auto at = static_cast<std::size_t>(found - report.begin());
    if (at != next || found == report.end()) close();
    if (found == report.end() || (at != next && line.empty())) {
      result.push_back(line);
    } else {
      if (at != next) first = at;
      next = at + 1;
    }
  }
  close();
  return result;
}

std::map<fs::path, std::string> databasesOf(const fs::path& folder) {
  std::map<fs::path, std::string> contents;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == ".nsf") contents[entry.path()] = contentOf(entry.path());
  }
  return contents;
}

}  // namespace

std::string joined(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  return text;
}

Lines linesOf(const std::string& text) {
  Lines lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

Lines worldNames() {
  Lines names;
  for (const auto& entry : fs::directory_iterator(inRepository("tests/worlds")))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

bool isRenewing() { return std::getenv("RENEW") != nullptr; }

World::World(const std::string& name, const std::string& library)
    : source_(inRepository("tests/worlds/" + name)) {
  for (const std::string& line : linesOf(contentOf(source_ / "world.txt"))) {
    const std::size_t blank = line.find(' ');
    if (line.starts_with("# ")) continue;
    settings_.emplace(line.substr(0, blank), replaced(line.substr(blank + 1), "@SERVER@", root()));
  }
  fs::create_directories(program());
  fs::create_directories(data());
  if (settings_.contains("server")) layOut(inRepository(setting("server", "")));
  layOut(source_);
  std::string file = library.empty() ? builtStandIn() : library;
  if (settings_.contains("library")) file = inBuild(setting("library", ""));
  if (setting("library", "") != "none" && !fs::exists(program() / "nnotes.dll"))
    fs::copy(file, program() / "nnotes.dll");
  databases_ = databasesOf(data());
}

std::string World::setting(const std::string& word, const std::string& otherwise) const {
  const auto found = settings_.find(word);
  return found == settings_.end() ? otherwise : found->second;
}

void World::layOut(const fs::path& source) const {
  for (const char* part : {"program", "data"}) {
    if (!fs::exists(source / part)) continue;
    fs::copy(source / part, folder_.path() / part,
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    for (const auto& file : fs::directory_iterator(folder_.path() / part)) {
      if (file.path().extension() == ".ini")
        writeFile(file.path(), replaced(contentOf(file.path()), "@SERVER@", root()));
    }
  }
}

Shown World::run() const {
  Lines command = {builtProgram("qbdiagnostics"), setting("path", root() + "/program")};
  if (command.back() == "none") command.pop_back();
  const auto [first, last] = settings_.equal_range("argument");
  for (auto argument = first; argument != last; ++argument) command.push_back(argument->second);
  const ProcessResult result = runProcess(command, root() + "/console");
  const bool usual = result.status == 0 || result.status == 1;
  Shown shown{usual ? std::to_string(result.status) : "abnormal", {}, shownReport(reportBytes())};
  const std::string console = masked(replaced(result.output, "\r", ""), root());
  shown.console = withoutReport(linesOf(console), shown.report);
  return shown;
}

std::string World::reportBytes() const {
  for (const fs::path& folder : {data() / "Quellbright", folder_.path()}) {
    const fs::path file = fs::is_directory(folder) ? onlyFile(folder, reportPrefix) : fs::path();
    if (!file.empty()) return contentOf(file);
  }
  return "";
}

// A line of the report ends with CR LF; a further CR in front of it belongs to a text.
Lines World::shownReport(const std::string& bytes) const {
  std::string text = replaced(fromLatin1(bytes), "\n", "<LF>\n");
  text = replaced(replaced(text, "\r<LF>", ""), "\r", "<CR>");
  if (!text.empty() && text.back() != '\n') text += "<no line feed>";
  return linesOf(masked(text, root()));
}

bool World::restore() const {
  bool unchanged = true;
  for (const auto& [path, content] : databasesOf(data())) {
    const auto before = databases_.find(path);
    const bool grows = path == data() / "QBConf.nsf";
    unchanged = unchanged && before != databases_.end() && content.starts_with(before->second) &&
                (grows || content == before->second);
  }
  for (const auto& [path, content] : databases_) writeFile(path, content);
  if (fs::is_directory(data() / "Quellbright")) fs::remove_all(data() / "Quellbright");
  for (const auto& file : fs::directory_iterator(folder_.path())) {
    if (file.path().extension() == ".log") fs::remove(file.path());
  }
  return unchanged;
}

std::filesystem::path World::expectedFile(const std::string& name) const {
  const std::string own = source_.filename().string();
  const std::string world = name == "report.txt" ? setting("report", own) : own;
  return source_.parent_path() / world / "expected" / name;
}

Shown World::expected() const {
  return {setting("status", "1"), linesOf(contentOf(expectedFile("console.txt"))),
          linesOf(contentOf(expectedFile("report.txt")))};
}

void World::renew(const Shown& shown) const {
  fs::create_directories(source_ / "expected");
  writeFile(expectedFile("console.txt"), joined(shown.console));
  if (!shown.report.empty() && !settings_.contains("report"))
    writeFile(expectedFile("report.txt"), joined(shown.report));
}

}  // namespace test
