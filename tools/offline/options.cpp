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

std::string serverFrom(const std::string& text) {
  if (text.empty() || hasControl(text)) throw WrongUsage("--server takes the name of a server");
  return text;
}

std::chrono::hours zoneFrom(const std::string& text) {
  const auto zone = store::zoneFrom(text);
  if (!zone) throw WrongUsage("--timezone takes whole hours west of GMT, from -23 to 23");
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
      std::cout << (letter == helpOption ? usageLine()
                                         : std::string(programName) + " " PROGRAM_VERSION)
                << '\n';
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
