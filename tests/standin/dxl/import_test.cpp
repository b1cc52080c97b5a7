// What the importer makes of exports, run as a user would. Its stores are opened with the library.
#include <gtest/gtest.h>

#include <filesystem>

#include "standin/server.h"
#include "support/folders.h"
#include "support/process.h"
#include "support/rows.h"

namespace standin_tests {
namespace {

namespace fs = std::filesystem;

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
}

// The shorthands that the head of the table tells.
std::string expanded(std::string text) {
  replaceAll(text, "<db>", R"({"database":{"title":"","replica":"0000000000000000"}})");
  replaceAll(text, "<dtd>", R"(<!DOCTYPE database SYSTEM "missing.dtd">)");
  for (std::size_t at = 0; (at = text.find("{*", at)) != std::string::npos;) {
    const std::size_t mark = text.find(' ', at);
    const std::size_t end = text.find("*}", mark);
    const std::string part = text.substr(mark + 1, end - mark - 1);
    const std::size_t size = std::stoul(text.substr(at + 2, mark - at - 2)) * part.size();
    std::string repeated = part;
    while (repeated.size() < size) repeated += repeated;
    repeated.resize(size);
    text.replace(at, end + 2 - at, repeated);
    at += repeated.size();
  }
  return text;
}

std::string encoded(const std::string& encoding, const std::string& text) {
  if (encoding == "bytes") return text;
  std::string bytes;
  for (const char16_t unit : test::wide(text)) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += encoding == "little" ? std::string{low, high} : std::string{high, low};
  }
  return bytes;
}

// Its exit status and what it says, on both streams.
std::string import(const std::string& arguments) {
  const auto result = test::runProcess(
      {"sh", "-c", R"("$0" )" + arguments + " 2>&1", test::builtProgram("import-dxl")},
      "../output");
  return std::to_string(result.status) + ": " + result.output;
}

// Exports a.xml, b.xml and so on.
std::string write(const std::string& encoding, std::string content) {
  std::string names;
  char name = 'a';
  for (std::size_t end = 0; end != std::string::npos; ++name) {
    end = content.find("<next>");
    const std::string file = std::string{name} + ".xml";
    test::writeFile(file, encoded(encoding, content.substr(0, end)));
    names += ' ' + file;
    if (end != std::string::npos) content.erase(0, end + 6);
  }
  return names;
}

std::string filesLeft() {
  std::string left;
  for (const auto& entry : fs::directory_iterator("."))
    if (entry.path().extension() != ".xml") left += entry.path().filename().string() + ' ';
  return left;
}

class ImportDxl : public testing::Test {
 public:
  ImportDxl() {
    fs::create_directory("folder");
    fs::current_path("folder");
  }
  ~ImportDxl() override { fs::current_path(".."); }

 private:
  Server server_;
};

TEST_F(ImportDxl, ExportsBecomeAStore) {
  for (const auto& [where, row] : test::rowsOf("standin/dxl/imports.txt", 5)) {
    const std::string names = write(row[1], expanded(row[2]));
    EXPECT_EQ(import(row[0] + names + " s.nsf"), row[3] + '\n') << where;
    EXPECT_EQ(test::contentOf("s.nsf"), row[4].empty() ? "" : expanded(row[4]) + '\n') << where;
    EXPECT_EQ(filesLeft(), row[4].empty() ? "" : "s.nsf ") << where;
    // The library takes long over a note of 16 MiB.
    if (!row[4].empty() && row[4].find("{*") == std::string::npos) {
      EXPECT_EQ(foundIn("s.nsf").find("database"), std::string::npos) << where;
    }
    fs::remove("s.nsf");
  }
}

TEST_F(ImportDxl, ValuesFollowTheirRules) {
  for (const auto& [where, row] : test::rowsOf("standin/dxl/values.txt", 3)) {
    write("bytes", "<document><item name='i'>" + row[1] + "</item></document>");
    const std::string said = import("--force --timezone " + row[0] + " a.xml s.nsf");
    const std::string start = "left out: note -, item i: ";
    const std::size_t at = said.find(start);
    if (at == std::string::npos) {
      EXPECT_TRUE(test::contentOf("s.nsf").ends_with(R"("items":{"i":)" + row[2] + "}}\n"))
          << where << said << test::contentOf("s.nsf");
    } else {
      EXPECT_EQ(said.substr(at + start.size(), said.find('\n') - at - start.size()), row[2])
          << where;
    }
  }
}

TEST_F(ImportDxl, ExportThatIsCutOffMakesNothing) {
  const std::string whole =
      "<database>" +
      expanded("{*300 <document form='F'><item name='x'><text>y</text></item></document>*}") +
      "</database>";
  for (std::size_t size = 0; size < whole.size(); size += 1024) {
    write("bytes", whole.substr(0, size));
    EXPECT_TRUE(import("a.xml s.nsf").starts_with("1: a.xml:1: ")) << size;
    EXPECT_EQ(filesLeft(), "");
  }
}

TEST_F(ImportDxl, TargetIsReplacedOnlyOnDemand) {
  const std::string made = "notes 0, profiles 0, design elements 0, items kept 0, left out 0\n";
  write("bytes", "<database title='new'/>");
  test::writeFile("s.nsf", "old");
  EXPECT_EQ(import("a.xml s.nsf"), "1: s.nsf: exists; --force replaces it\n");
  EXPECT_EQ(test::contentOf("s.nsf"), "old");
  EXPECT_EQ(import("missing.xml --force s.nsf"), "1: missing.xml: No such file or directory\n");
  EXPECT_EQ(import("a.xml --force ./a.xml"), "1: ./a.xml: is one of the exports\n");
  EXPECT_EQ(import("a.xml --force ."), "1: .: is not a file that can be replaced\n");
  EXPECT_EQ(import("a.xml missing/s.nsf"), "1: missing/s.nsf: No such file or directory\n");
  EXPECT_EQ(import(". t.nsf"), "1: .: Is a directory\n");
  EXPECT_EQ(import("a.xml --force s.nsf"), "0: " + made);
  EXPECT_EQ(filesLeft(), "s.nsf ");
}

TEST_F(ImportDxl, WrongArgumentsAreUsage) {
  for (const std::string arguments :
       {"", "a.xml", "--wrong a.xml s.nsf", "--timezone", "--timezone 24 a.xml s.nsf",
        "--timezone -24 a.xml s.nsf", "--timezone 1.5 a.xml s.nsf", "--timezone '' a.xml s.nsf"}) {
    const std::string said = import(arguments);
    EXPECT_TRUE(said.starts_with("2: ") && said.find("Usage: import-dxl") != std::string::npos)
        << arguments << said;
  }
  EXPECT_TRUE(import("--help").starts_with("0: Usage: import-dxl"));
  EXPECT_TRUE(import("--version").starts_with("0: import-dxl "));
}

}  // namespace
}  // namespace standin_tests
