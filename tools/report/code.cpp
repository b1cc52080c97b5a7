#include "report/code.h"

#include <array>
#include <cstddef>

namespace reader {
namespace {

struct Words {
  std::string_view name;
  std::string_view sentence;
};

// By the number of the code.
constexpr std::array words = {
    Words{},
    Words{
        "not-wired",
        "The Domino server does not load this part of the add-on: the variable of notes.ini lacks "
        "its name."},
    Words{"file-missing", "A file of the add-on is missing: install the add-on again."},
    Words{"customer", "The customer profile could not be read from the configuration database."},
    Words{"server",
          "The profile of this server could not be read from the configuration database."},
    Words{"users", "The filtered users could not be counted."},
    Words{"configuration", "The active configuration could not be read."},
    Words{"no-active", "No configuration is active: the add-on works with its defaults."},
    Words{"several-active",
          "More than one configuration is active: leave only one of them active."},
    Words{"access",
          "No file can be written to the add-on's folder: check that the folder exists, its rights "
          "and the free space."},
    Words{"sender-filter", "The black and white list of senders could not be read."},
    Words{"no-server-name", "notes.ini has no ServerName: users cannot be imported."},
    Words{"books", "The server's address books could not be listed as they should."},
    Words{"load", "The directory could not be loaded: users are missing from the import."},
    Words{"entry", "An entry of the directory could not be read: it is not imported."},
    Words{"import", "The mail file of a directory entry could not be read: it is not imported."},
    Words{"updates", "The list of installed updates could not be read."},
    Words{"create-event", "Events cannot be written to the configuration database."},
    Words{"read-events", "The events of the configuration database could not be read."},
    Words{"event", "An event of the configuration database could not be read."},
    Words{"no-end",
          "The run did not reach its end, or its report was cut: it was killed, the disk was full, "
          "or "
          "a character stood in its way."},
    Words{"overwritten",
          "The report reached its size limit and started over: its beginning is lost."},
    Words{"late-start",
          "The report could not be opened when the run began: the sections before are missing."},
    Words{"several-runs", "The file holds more than one run: read each by itself."}};
static_assert(words.size() == static_cast<std::size_t>(Code::severalRuns) + 1);

}  // namespace

std::string_view nameOf(Code code) { return words.at(static_cast<std::size_t>(code)).name; }

std::string_view sentenceOf(Code code) { return words.at(static_cast<std::size_t>(code)).sentence; }

}  // namespace reader
