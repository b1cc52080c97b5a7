#include "offline/options.h"

#include <getopt.h>

#include <array>
#include <iostream>

#include "offline/program_texts.h"
#include "store/notes_ini.h"

namespace offline {
namespace {

constexpr int intoOption = 'i';
constexpr int notesIniOption = 'n';
constexpr int serverOption = 's';
constexpr int timezoneOption = 't';
constexpr int helpOption = 'h';
constexpr int versionOption = 'v';

constexpr std::array optionTable = {option{"into", required_argument, nullptr, intoOption},
                                    option{"notes-ini", required_argument, nullptr, notesIniOption},
                                    option{"server", required_argument, nullptr, serverOption},
                                    option{"timezone", required_argument, nullptr, timezoneOption},
                                    option{"help", no_argument, nullptr, helpOption},
                                    option{"version", no_argument, nullptr, versionOption},
                                    option{nullptr, 0, nullptr, 0}};

constexpr std::string_view examples =
    "\n"
    "The configuration and two address books, with the server's own settings:\n"
    "  qbdiagnostics-offline --into /tmp/acme --notes-ini notes.ini QBConf.xml names.xml "
    "partners.xml\n"
    "No settings came with them; the server is in a zone five hours west of GMT:\n"
    "  qbdiagnostics-offline --into /tmp/acme --timezone 5 QBConf.xml names.xml\n"
    "The configuration is that of several servers:\n"
    "  qbdiagnostics-offline --into /tmp/acme --server \"CN=mail01/O=Acme\" QBConf.xml names.xml\n"
    "The address book came in parts:\n"
    "  qbdiagnostics-offline --into /tmp/acme QBConf.xml names-a.xml names-b.xml\n"
    "An export is made as offline.md tells, whose place the manual page names.\n";

std::string serverFrom(const std::string& text) {
  if (text.empty() || hasControl(text)) throw WrongUsage("--server takes the name of a server");
  return text;
}

std::chrono::hours zoneFrom(const std::string& text) {
  const auto zone = store::zoneFrom(text);
  if (!zone)
    throw WrongUsage("--timezone takes whole hours west of GMT, from -23 to 23, as 5 or -1");
  return *zone;
}

void take(Options& options, int letter, const std::string& value) {
  switch (letter) {
    case intoOption:
      options.into = value;
      break;
    case notesIniOption:
      options.notesIni = value;
      break;
    case serverOption:
      options.server = serverFrom(value);
      break;
    case timezoneOption:
      options.zone = zoneFrom(value);
      break;
    default:
      break;
  }
}

void takeExports(Options& options, int argc, char** argv) {
  if (options.into.empty()) throw WrongUsage("--into DIR is missing");
  if (optind == argc) throw WrongUsage("the export of the configuration is missing");
  options.exports.assign(argv + optind, argv + argc);
}

}  // namespace

std::optional<Options> parseOptions(int argc, char** argv) {
  Options options;
  int letter = 0;
  opterr = 0;
  while ((letter = getopt_long(argc, argv, "", optionTable.data(), nullptr)) != -1) {
    if (letter == helpOption || letter == versionOption) {
      std::cout << (letter == helpOption ? usageLine() + '\n' + std::string(examples)
                                         : std::string(programName) + " " PROGRAM_VERSION "\n");
      return std::nullopt;
    }
    if (letter == '?') {
      throw WrongUsage(std::string("no option, or one that lacks its value: ") + argv[optind - 1]);
    }
    take(options, letter, optarg == nullptr ? "" : optarg);
  }
  takeExports(options, argc, argv);
  return options;
}

std::string usageLine() {
  return "Usage: " + std::string(programName) +
         " --into DIR [--notes-ini FILE] [--server NAME] [--timezone HOURS]"
         " EXPORT.xml...";
}

}  // namespace offline
