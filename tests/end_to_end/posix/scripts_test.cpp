// The scripts that users run, in folders with any names, and by a shell with any settings.
#include <gtest/gtest.h>

#include "support/folders.h"
#include "support/process.h"
#include "support/rows.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

// A folder to run scripts in: with a checkout whose programs are built already, and what a package
// installs.
class Scripts : public testing::Test {
 protected:
  Scripts() {
    fs::create_directories(path("check out/build"));
    fs::copy(test::inRepository("scripts"), path("check out/scripts"));
    fs::create_directory_symlink(test::inBuild(""), path("check out/build/release"));
    for (const std::string part : {"bin", "share/qbdiagnostics", "lib/qbdiagnostics", "call er"})
      fs::create_directories(path(part));
    writeProgram("qbdiagnostics-sample", test::contentOf(test::inBuild("qbdiagnostics-sample")));
    fs::create_directory_symlink(test::inRepository("sample-server"),
                                 path("share/qbdiagnostics/sample-server"));
    fs::create_directory_symlink(test::inBuild("standin"), path("lib/qbdiagnostics/standin"));
    // What would install packages and build finds nothing to do.
    writeProgram("cmake", "#!/bin/sh\n");
    writeProgram("dpkg-query", "#!/bin/sh\necho installed\n");
    fs::create_directories(path("call er/full/x"));
    test::writeFile(path("call er/file"), "");
    test::writeFile(path("call er/conf.xml"),
                    "<database><profiledocument name='qbcustomerprofile'/></database>");
  }

  fs::path path(const std::string& name) const { return folder_.path() / name; }

  void writeProgram(const std::string& name, const std::string& script) const {
    test::writeFile(path("bin/" + name), script);
    fs::permissions(path("bin/" + name), fs::perms::owner_all);
  }

  // The exit status and what comes on both streams, with <dir> for the folder.
  std::string run(const std::string& command) const {
    const auto result = test::runProcess(
        {"sh", "-c",
         "exec 2>&1; cd \"$0\"; export CDPATH=.:.. PATH=\"$0/bin:$PATH\"; cd \"./call er\"; " +
             command,
         folder_.text()},
        folder_.text() + "/console");
    std::string shown = std::to_string(result.status) + ": " + result.output;
    for (std::size_t at = 0; (at = shown.find(folder_.text(), at)) != std::string::npos;)
      shown.replace(at, folder_.text().size(), "<dir>");
    return shown;
  }

 private:
  test::TemporaryFolder folder_;
};

TEST_F(Scripts, SayOrDoWhatTheirArgumentsAskFor) {
  for (const auto& [where, row] : test::rowsOf("end_to_end/scripts.txt", 3)) {
    const std::string shown = run(row[0]);
    EXPECT_TRUE(shown.starts_with(row[1])) << where << "\n" << shown;
    if (row[2].empty()) continue;
    const fs::path server = path(row[2]);
    const std::string settings = "Directory=" + (server / "data").string() + "\n";
    EXPECT_NE(test::contentOf(server / "program/notes.ini").find(settings), std::string::npos)
        << where;
    EXPECT_TRUE(fs::exists(server / "data/QBConf.nsf")) << where;
    EXPECT_TRUE(fs::exists(server / "program/nnotes.dll")) << where;
  }
}

}  // namespace
