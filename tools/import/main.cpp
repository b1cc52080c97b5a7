// import-dxl: makes a store of the stand-in library of XML exports of databases.
#include <getopt.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <new>
#include <optional>
#include <string>
#include <string_view>

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
    "Usage: import-dxl [--timezone HOURS] [--force] EXPORT.xml... STORE.nsf\n";

constexpr std::string_view help =
    "Makes one store of the stand-in Notes library of one or more XML exports.\n"
    "\n"
    "  --timezone HOURS  the zone of times without an offset, whole hours west of GMT,\n"
    "                    -23 to 23; 0 if not given\n"
    "  --force           replace a store that exists\n"
    "  --help            show this and end\n"
    "  --version         show the version and end\n"
    "\n"
    "Standard error names what is left out and ends with the numbers of the store.\n"
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

ImportOptions optionsFrom(int count, char** arguments) {
  constexpr option known[] = {{"timezone", required_argument, nullptr, 't'},
                              {"force", no_argument, nullptr, 'f'},
                              {"help", no_argument, nullptr, 'h'},
                              {"version", no_argument, nullptr, 'v'},
                              {nullptr, 0, nullptr, 0}};
  ImportOptions options;
  for (int found = 0; (found = getopt_long(count, arguments, "", known, nullptr)) != -1;) {
    if (found == 't') options.zone = zoneFrom(optarg);
    if (found == 'f') options.replaces = true;
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
  const ImportOptions options = optionsFrom(count, arguments);
  Report report;
  try {
    report.totals(importExports(options, report));
    return made;
  } catch (const ImportFailure& failure) {
    report.failure(failure.what());
  } catch (const std::bad_alloc&) {
    report.failure("not enough memory");
  }
  return failed;
}
