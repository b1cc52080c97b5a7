#include "driver/access_test.h"

#include "driver/log_folder.h"

namespace driver {

void testAccess(const configuration::VRXConfiguration& configuration,
                const std::u16string& reportDirectory, const base::Output& output) {
  base::ReportLog testLog(makeLogFolder(configuration.dataDirectory, reportDirectory),
                          configuration.logNameSecond + u"-TESTLOGFILE-",
                          configuration.logExtension, configuration.logNameFirst + u"[test]",
                          configuration.logDateFormat, base::ordinaryLevel, false);
  std::u16string outcome = u": Failed!";
  if (testLog.open()) {
    testLog.write(u"This is a sample output from the diagnistic tool.");
    testLog.close();
    outcome = u": Succes!";
  }
  output.reportFirst(u"ACCESS TO QUELLBRIGHTDIRECTORY: " + testLog.fileName() + outcome);
}

}  // namespace driver
