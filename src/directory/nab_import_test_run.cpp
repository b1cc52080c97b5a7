#include "directory/nab_import_test_run.h"

#include "directory/address_books.h"
#include "directory/nab_import.h"
#include "documents/server_profile.h"

namespace directory {
namespace {

// It bounds the length of what one step reports.
constexpr std::int32_t batchSize = 50;
constexpr unsigned stepIndent = 2;

}  // namespace

void testNabImport(base::ReportLog& report, bool writeToConsole) {
  const base::Output output{report, writeToConsole};
  std::u16string server;
  documents::currentServerName(server);
  output.consoleFirst(u"Testing NabImport.");
  if (server.empty()) {
    output.consoleFirst(u"No servername found. Stopping NabImport.");
    return;
  }
  NAB::NabImport nabImport(batchSize, server, useNamesNsf(), true);
  std::u16string text = u"LOADING DIRECTORY:\n";
  do {
    nabImport.step();
    nabImport.print(text, stepIndent);
    output.consoleFirst(text);
    text = u"IMPORTING:";
  } while (!nabImport.done());
}

}  // namespace directory
