// What the importer makes of exports, run as a user would. Its stores are opened with the library.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
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

// Its exit status and what it says, on both streams; `settings` are commands of the shell.
std::string import(const std::string& arguments, const std::string& settings = "") {
  const auto result = test::runProcess(
      {"sh", "-c", settings + R"(exec "$0" 2>&1 )" + arguments, test::builtProgram("import-dxl")},
      "../output");
  return std::to_string(result.status) + ": " + result.output;
}

// The same with the list of what is left out in place of the table.
std::string listed(const std::string& arguments) {
  const std::string said = import("--list ../list " + arguments);
  const std::size_t table = std::min(said.find("left out "), said.find("notes "));
  const std::size_t numbers = said.find("notes ");
  if (numbers == std::string::npos) return said;
  return said.substr(0, table) + test::contentOf("../list") + said.substr(numbers);
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
  for (const auto& [where, row] : test::rowsOf("tools/import/imports.txt", 5)) {
    const std::string names = write(row[1], expanded(row[2]));
    EXPECT_EQ(listed(row[0] + names + " s.nsf"), row[3] + '\n') << where;
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
  for (const auto& [where, row] : test::rowsOf("tools/import/values.txt", 3)) {
    write("bytes", "<document><item name='i'>" + row[1] + "</item></document>");
    const std::string said = listed("--force --timezone " + row[0] + " a.xml s.nsf");
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
  test::writeFile("s.nsf", header + "notes that went\n");
  test::writeFile("b.xml", "an export");
  EXPECT_EQ(import("a.xml s.nsf"), "1: s.nsf: exists; --force replaces it\n");
  EXPECT_EQ(import("--force a.xml b.xml"), "1: b.xml: is no store, and nothing else is replaced\n");
  EXPECT_EQ(test::contentOf("b.xml"), "an export");
  EXPECT_EQ(import("missing.xml --force s.nsf"), "1: missing.xml: No such file or directory\n");
  EXPECT_EQ(import("a.xml --force ./a.xml"), "1: ./a.xml: is one of the exports\n");
  EXPECT_EQ(import("a.xml --force ."), "1: .: is not a file that can be replaced\n");
  EXPECT_EQ(import("a.xml missing/s.nsf"), "1: missing/s.nsf: No such file or directory\n");
  EXPECT_EQ(import("a.xml --force s.nsf"), "0: " + made);
  EXPECT_EQ(filesLeft(), "s.nsf ");
}

TEST_F(ImportDxl, ExportThatIsNoFileIsRefused) {
  ASSERT_EQ(mkfifo("pipe.xml", 0600), 0);
  for (const std::string path : {".", "pipe.xml", "/dev/zero"}) {
    EXPECT_EQ(import(path + " s.nsf"), "1: " + path + ": is not a file\n");
    EXPECT_EQ(filesLeft(), "");
  }
}

// The list is more than a pipe and the program hold, so that each line is there once only if all
// are taken care of, and a reader who leaves is noticed.
TEST_F(ImportDxl, MessagesComeOnceAndStreamsThatAreClosedOrNotReadHarmNoStore) {
  write("bytes", "<document form='F'>" + expanded("{*40000 <item name='i'/>*}") + "</document>");
  const std::string store = expanded("<db>\n{\"note\":1,\"items\":{\"Form\":\"F\"}}\n");
  const std::string said =
      "0: left out    40000  empty  i\n"
      "notes 1, profiles 0, design elements 0, items kept 1, left out 40000\n";
  for (const std::string how : {"<&- >&-", "2>&-", "<&- >&- 2>&-", "--list /dev/stdout | true"}) {
    test::writeFile("../list", "");
    EXPECT_EQ(import("--list ../list a.xml s.nsf " + how), how == "<&- >&-" ? said : "0: ") << how;
    const bool isListed = how.find("list") == std::string::npos;
    EXPECT_TRUE(test::contentOf("../list") ==
                (isListed ? expanded("{*40000 left out: note -, item i: empty\n*}") : ""))
        << how;
    EXPECT_EQ(test::contentOf("s.nsf"), store) << how;
    EXPECT_EQ(filesLeft(), "s.nsf ") << how;
    fs::remove("s.nsf");
  }
}

TEST_F(ImportDxl, WhatIsLeftOutTheMostIsToldFirst) {
  std::string items = "<item name='often'/><item name='often'/><item name='b'><richtext/></item>";
  std::string rows = "left out        2  empty  often\n";
  for (char name = 'c'; name <= 'x'; ++name) {
    items += std::string("<item name='") + name + "'/>";
    if (name <= 'u') rows += std::string("left out        1  empty  ") + name + "\n";
  }
  write("bytes", "<document>" + items + "</document>");
  EXPECT_EQ(import("a.xml s.nsf"), "0: " + rows +
                                       "left out and 4 more\nnotes 1, profiles 0, design elements "
                                       "0, items kept 0, left out 25\n");
  EXPECT_EQ(import("--list missing/list a.xml t.nsf"),
            "1: missing/list: No such file or directory\n");
  EXPECT_EQ(filesLeft(), "s.nsf ");
}

TEST_F(ImportDxl, FileThatCannotBeWrittenIsNotMade) {
  for (const std::string content :
       {"<database title='{*30000 x*}'/>", "<document form='{*600000 x*}'/>"}) {
    write("bytes", expanded(content));
    EXPECT_EQ(import("a.xml s.nsf", "ulimit -f 16; "), "1: s.nsf: File too large\n");
    EXPECT_EQ(filesLeft(), "");
  }
  EXPECT_EQ(import("--help >/dev/full"), "1: ");
}

TEST_F(ImportDxl, StoreHasTheModeOfAnyNewFile) {
  write("bytes", "<database/>");
  for (const auto& [mask, mode] : {std::pair("027", 0640), std::pair("002", 0664)}) {
    EXPECT_TRUE(
        import("--force a.xml s.nsf", "umask " + std::string(mask) + "; ").starts_with("0"));
    EXPECT_EQ(fs::status("s.nsf").permissions(), static_cast<fs::perms>(mode)) << mask;
  }
}

// What an import does during which something happens, once its new file is listed: all exports have
// been looked at by then, and are still to be read twice. `runner` runs the program.
test::ProcessResult importDuring(const std::string& event, const std::string& arguments,
                                 const std::string& runner = "") {
  const std::string script = R"(
    ulimit -c 0
    $3 "$0" $2 </dev/null 2>&1 &
    until [ -e s.nsf ]; do
      for file in .import-dxl-*; do [ ! -e "$file" ] || break 2; done
    done
    eval "$1"
    wait $!)";
  return test::runProcess({"timeout", "60", "sh", "-c", script, test::builtProgram("import-dxl"),
                           event, arguments, runner},
                          "../output");
}

// The import may be faster than what happens during it.
constexpr int mostTries = 20;

TEST_F(ImportDxl, SignalLeavesNothingBehindAndIsIgnoredIfItWas) {
  write("bytes", expanded("<document><item name='x'><text>{*4000000 x*}</text></item></document>"));
  const auto statusAfter = [](const std::string& signal, const std::string& disposition) {
    return importDuring("kill -s " + signal + " $!", "a.xml s.nsf",
                        "env --" + disposition + "-signal=" + signal)
        .status;
  };
  for (const auto& [signal, number] :
       {std::pair("HUP", SIGHUP), {"INT", SIGINT}, {"QUIT", SIGQUIT}, {"TERM", SIGTERM}}) {
    int status = 0;
    int tries = 0;
    do {
      status = statusAfter(signal, "default");
    } while (fs::remove("s.nsf") && ++tries < mostTries);
    EXPECT_EQ(status, 128 + number) << signal;
    EXPECT_EQ(filesLeft(), "") << signal;
  }
  EXPECT_EQ(statusAfter("HUP", "ignore"), 0);
  EXPECT_EQ(filesLeft(), "s.nsf ");
}

TEST_F(ImportDxl, ExportThatChangesMeanwhileMakesNothing) {
  const char* const duringLastReading =
      "until [ -s .import-dxl-* ] || [ -e s.nsf ]; do :; done; echo >>b.xml";
  const std::string small = "<database/>";
  const std::string large = "<database>" + expanded("{*100000 <document form='F'/>*}</database>");
  for (const auto& [change, file] : {std::pair("echo >>a.xml", "a.xml"),
                                     {"mv c.xml a.xml", "a.xml"},
                                     {"echo x >>b.xml", "b.xml"},
                                     {duringLastReading, "b.xml"}}) {
    test::ProcessResult result;
    int tries = 0;
    do {
      write("bytes", std::string(small).append("<next>").append(large).append("<next>") + small);
      result = importDuring(change, "a.xml b.xml s.nsf");
    } while (fs::remove("s.nsf") && ++tries < mostTries);
    EXPECT_EQ(result.status, 1) << change;
    EXPECT_EQ(result.output, std::string(file) + ": has changed while it was read\n") << change;
    EXPECT_EQ(filesLeft(), "") << change;
  }
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
