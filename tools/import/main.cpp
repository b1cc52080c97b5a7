// import-dxl: makes a store of the stand-in library of XML exports of databases.
#include <getopt.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "import/failure.h"
#include "import/import.h"
#include "import/report.h"
#include "platform/process.h"
#include "store/notes_ini.h"

namespace {

using namespace dxl;

constexpr int made = 0;
constexpr int failed = 1;
constexpr int wrongUsage = 2;

constexpr std::string_view usage =
    "Usage: import-dxl [--timezone HOURS] [--force] [--list FILE] EXPORT.xml... STORE.nsf\n";

constexpr std::string_view help =
    "Makes one store of the stand-in Notes library of one or more XML exports.\n"
    "\n"
    "  --timezone HOURS  the zone of times without an offset, whole hours west of GMT,\n"
    "                    -23 to 23; 0 if not given\n"
    "  --force           replace a store that exists, or an empty file\n"
    "  --list FILE       write a line for each item that is left out to FILE\n"
    "  --help            show this and end\n"
    "  --version         show the version and end\n"
    "\n"
    "Standard error tells what is left out the most, and the numbers of the store.\n"
    "Exit status: 0 the store is made; 1 it is not, standard error says why; 2 usage.\n";

[[noreturn]] void endWithUsage(std::string_view reason) {
  std::cerr << reason << usage;
  std::exit(wrongUsage);
}

[[noreturn]] void endWith(std::string_view text) {
  std::cout << text << std::flush;
  std::exit(std::cout ? made : failed);
}

std::chrono::hours zoneFrom(std::string_view argument) {
  const std::optional<std::chrono::hours> zone = store::zoneFrom(argument);
  if (!zone.has_value())
    endWithUsage("import-dxl: the zone is not a whole number from -23 to 23\n");
  return *zone;
}

struct Options : ImportOptions {
  std::optional<std::string> list;
};

Options optionsFrom(int count, char** arguments) {
  constexpr option known[] = {
      {"timezone", required_argument, nullptr, 't'}, {"force", no_argument, nullptr, 'f'},
      {"list", required_argument, nullptr, 'l'},     {"help", no_argument, nullptr, 'h'},
      {"version", no_argument, nullptr, 'v'},        {nullptr, 0, nullptr, 0}};
  Options options;
  for (int found = 0; (found = getopt_long(count, arguments, "", known, nullptr)) != -1;) {
    if (found == 't') options.zone = zoneFrom(optarg);
    if (found == 'f') options.replaces = true;
    if (found == 'l') options.list = optarg;
    if (found == 'h') endWith(std::string(usage) + std::string(help));
    if (found == 'v') endWith("import-dxl " PROGRAM_VERSION "\n");
    if (found == '?') endWithUsage("");
  }
  options.exports.assign(arguments + optind, arguments + count);
  if (options.exports.size() < 2) endWithUsage("");
  options.store = options.exports.back();
  options.exports.pop_back();
  return options;
}

}  // namespace

int main(int count, char** arguments) {
  platform::prepareProcess();
  const Options options = optionsFrom(count, arguments);
  std::ofstream list;
  Report report(options.list.has_value() ? &list : nullptr);
  try {
    if (options.list.has_value()) list.open(*options.list);
    if (options.list.has_value() && !list) failBySystem(*options.list);
    report.totals(importExports(options, report));
    if (!list.flush()) report.failure(*options.list + ": not all of it could be written");
    return made;
  } catch (const ImportFailure& failure) {
    report.failure(failure.what());
  } catch (const std::bad_alloc&) {
    report.failure("not enough memory");
  }
  return failed;
}
