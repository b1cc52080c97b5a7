// A running stand-in library over a server folder of the test's own.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "notes/api.h"
#include "support/notes_recorder.h"
#include "support/stand_in.h"
#include "support/temporary_folder.h"

namespace test {

/// What a call that is made to fail shows: the library's words, and how a database that does not
/// close comes out.
inline const std::u16string unknown = u"Unknown status 0x2BAD";
inline const std::u16string closeFailure =
    u"Could not close connection to the database: " + unknown + u".";

class NotesServer : public testing::Test {
 protected:
  /// A server "mail" in GMT whose configuration database holds `notes`, lines of its file, and
  /// whose notes.ini holds `settings` besides.
  void start(const std::string& notes, const std::string& settings = {}) {
    writeDatabase("QBConf.nsf", notes);
    writeFile(folder_.path() / "notes.ini",
              "Directory=" + folder_.text() + "\nServerName=mail\n" + settings);
    loadLibrary();
    std::string program = "test";
    std::string iniFile = "=" + folder_.text() + "/notes.ini";
    char* arguments[] = {program.data(), iniFile.data(), nullptr};
    ASSERT_EQ(notes::NotesInitExtended(2, arguments), 0);
    recorder().calls.clear();
    recorder().counts.clear();
  }

  void TearDown() override {
    recorder() = {};
    if (notes::api.NotesTerm != nullptr) notes::NotesTerm();
  }

  void writeDatabase(const std::string& name, const std::string& notes) const {
    writeFile(folder_.path() / name,
              "{\"database\":{\"title\":\"T\",\"replica\":\"001234560000ABCD\"}}\n" + notes);
  }

  static std::string narrow(const std::u16string& text) { return {text.begin(), text.end()}; }

  std::string database() const { return contentOf(folder_.path() / "QBConf.nsf"); }

  static NotesRecorder& recorder() { return NotesRecorder::instance(); }

  /// Fails the call of that name and number, and with number 0 all of that name.
  static void fail(const std::string& operation, int number) {
    recorder() = {};
    recorder().fails = [=](const std::string& called, int count) {
      return called == operation && (number == 0 || count == number);
    };
  }

  const TemporaryFolder folder_;

 private:
  static void loadLibrary() {
    static const bool loaded = loadStandIn();
    ASSERT_TRUE(loaded);
    NotesRecorder::install();
  }
};

}  // namespace test
