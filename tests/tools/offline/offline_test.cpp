// Reports away from the server: what exports become, and what becomes of the report.
#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "support/folders.h"
#include "support/process.h"
#include "support/rows.h"
#include "support/world.h"

namespace {

namespace fs = std::filesystem;

TEST(Offline, ExportsOfTheSampleServerGiveItsReport) {
  const test::World world("sample");
  for (const std::string name : {"QBConf", "names", "partners"}) {
    const test::ProcessResult result =
        test::runProcess({test::builtProgram("import-dxl"), "--force",
                          test::inRepository("sample-server/export/" + name + ".xml"),
                          (world.data() / (name + ".nsf")).string()},
                         world.root() + "/console");
    EXPECT_EQ(result.status, 0) << name;
  }
  const test::Shown shown = world.run();
  EXPECT_EQ(test::joined(shown.report), test::joined(world.expected().report));
  EXPECT_EQ(test::joined(shown.console), test::joined(world.expected().console));
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

// What comes of the sample server where all names, paths, titles and users hold these letters: the
// report, its findings and the stores afterwards, without what each run changes.
std::string reportWith(const std::string& letters) {
  const test::TemporaryFolder folder;
  const auto lettered = [&letters](std::string text) {
    for (const std::string part :
         {"ordholm~", "mail~\\", "names~.nsf", "partners~.nsf", "=names~,partners~"})
      text = replaced(text, replaced(part, "~", ""), replaced(part, "~", letters));
    return text;
  };
  for (const std::string file :
       {"program/notes.ini", "export/QBConf.xml", "export/names.xml", "export/partners.xml"}) {
    test::writeFile(folder.path() / fs::path(file).filename(),
                    lettered(test::contentOf(test::inRepository("sample-server/" + file))));
  }
  const std::string command =
      R"(cd "$2" && "$0" --into "dir$3" --notes-ini notes.ini QBConf.xml names.xml partners.xml >&2 &&)"
      R"( { report=$(echo "dir$3"/data/Quellbright/*DIAGNOSTIC*); "$1" check "$report" | cut -f 2-;)"
      R"( cat "$report" "dir$3"/data/*.nsf "dir$3/data/mail$3"/* "dir$3/left-out.txt";)"
      R"( find "dir$3" -perm /077; })";
  const auto result =
      test::runProcess({"sh", "-c", command, test::builtProgram("qbdiagnostics-offline"),
                        test::builtProgram("qbreport"), folder.text(), letters},
                       folder.text() + "/console");
  const std::regex changes(
      R"(\d\d-\d\d-\d{4} [\d:]{8}\t\(\d+:\d+\)|\d{14}|\d{4}-\d\d-\d\d.[\d:.]{8,11})");
  return std::regex_replace(replaced(replaced(result.output, folder.text(), "<dir>"), letters, "*"),
                            changes, "<time>");
}

TEST(Offline, LettersBeyondAsciiAreFoundAndShownAsAnyOther) {
  // As many letters as the others have bytes: the report pads by bytes.
  const std::string ascii = reportWith("zyxwvutsrqponm");
  EXPECT_NE(ascii.find("Done Testing Get VRX events."), std::string::npos) << ascii;
  EXPECT_NE(ascii.find("O=Nordholm*"), std::string::npos);
  EXPECT_EQ(ascii.find("\ndir*"), std::string::npos) << "others may read it";
  EXPECT_EQ(ascii.find("LastName"), std::string::npos) << "private items are kept";
  EXPECT_NE(ascii.find("left out: note 922, item Body: richtext\n"), std::string::npos);
  EXPECT_EQ(reportWith("\u00e4\u00df\u20ac\u2013\u0141\u00fc"), ascii);
}

std::vector<std::string> parts(const std::string& list, char separator) {
  std::vector<std::string> result;
  std::istringstream stream(list);
  for (std::string part; std::getline(stream, part, separator);) result.push_back(part);
  return result;
}

std::string document(const std::string& form, const test::Lines& namesAndTexts) {
  std::string text = "<document form='" + form + "'>";
  for (std::size_t at = 0; at < namesAndTexts.size(); at += 2)
    text +=
        "<item name='" + namesAndTexts[at] + "'><text>" + namesAndTexts[at + 1] + "</text></item>";
  return text + "</document>";
}

// On the server A all mail files but one have a recipient profile, the first two.
std::string configuration(const std::string& servers) {
  std::string text = "<database>";
  for (const std::string& server : parts(servers, '|'))
    text += "<profiledocument name='QBServerProfile' username='" + server + "'/>";
  for (const std::string path : {"MAIL/a.nsf", "mail\\A.nsf", "mail\\b.NSF.nsf", "c.ntf",
                                 "..\\d.nsf", "C:\\e.nsf", "names.nsf", "names.nsf\\f.nsf"}) {
    text += document("QBProfile", {"Server", "a", "FilePath", path, "NAME", "of " + path,
                                   "REPLICAID", path == "c.ntf" ? "none" : "C12579E800311A1D"});
  }
  return text + "</database>";
}

std::string addressBook(const std::string& path) {
  std::string text = "<database path='" + path + "'>";
  for (const std::string file : {"mail\\A", "mail/B.NSF", "c.ntf", "..\\d", "C:\\e.nsf",
                                 "names.nsf", "names.nsf\\f", "without_profile"})
    text += document("Person", {"Type", "Person", "MailServer", "A", "MailFile", file});
  text += document("Person", {"Type", "Person", "MailServer", "Other", "MailFile", "mail\\A"});
  text += document("Group", {"Type", "Group", "MailServer", "A", "MailFile", "mail\\A"});
  return text + "</database>";
}

// The paths below the data folder, and what empty stores hold.
std::string listingOf(const fs::path& data) {
  std::set<std::string> lines;
  if (!fs::exists(data)) return "no data\n";
  for (const auto& entry : fs::recursive_directory_iterator(data)) {
    const std::string content = entry.is_regular_file() ? test::contentOf(entry) : "";
    const bool isEmptyStore = content.find('\n') + 1 == content.size();
    const std::string path = entry.path().lexically_relative(data).string();
    if (path.ends_with("f")) lines.insert(path + " " + (isEmptyStore ? content : "\n"));
  }
  std::string text;
  for (const std::string& line : lines) text += line;
  return text;
}

TEST(Offline, ServerIsLaidOutByTheRules) {
  const std::string mark = "<dir>";
  for (const auto& [where, row] : test::rowsOf("tools/offline/offline.txt", 6)) {
    const test::TemporaryFolder folder;
    const std::string dir = folder.text() + "/server";
    std::string command = R"(cd "$1" && exec "$0" 2>&1 --into server )";
    test::writeFile(folder.path() / "conf.xml",
                    row[0].starts_with("<") ? row[0] : configuration(row[0]));
    if (!row[2].empty()) command += "--notes-ini ini ";
    test::writeFile(folder.path() / "ini", row[2]);
    command += row[3] + " conf.xml ";
    int number = 0;
    for (const std::string& path : parts(row[1], '|')) {
      const std::string file = "book" + std::to_string(++number) + ".xml";
      test::writeFile(folder.path() / file, addressBook(path));
      command += file + " ";
    }
    const auto result = test::runProcess(
        {"sh", "-c", command, test::builtProgram("qbdiagnostics-offline"), folder.text()},
        folder.text() + "/console");
    std::string shown =
        result.output + listingOf(dir + "/data") + test::contentOf(dir + "/program/notes.ini");
    shown = replaced(shown, dir, mark);
    EXPECT_EQ(std::to_string(result.status), row[4]) << where << "\n" << shown;
    for (const std::string& part : parts(row[5], '|'))
      EXPECT_NE(shown.find(part), std::string::npos) << where << " lacks " << part << "\n" << shown;
  }
}

}  // namespace
