#include <sys/stat.h>

#include <exception>
#include <filesystem>
#include <iostream>

#include "offline/messages.h"
#include "offline/offline_report.h"
#include "offline/options.h"
#include "platform/process.h"

namespace {

enum ExitStatus { reportMade = 0, failed = 1, wrongUsage = 2 };

}  // namespace

int main(int argc, char** argv) {
  platform::prepareProcess();
  umask(077);  // what customers send is nobody else's business, nor is the report of it
  try {
    if (const auto options = offline::parseOptions(argc, argv)) offline::makeReport(*options);
    if (!std::cout.flush()) throw offline::Failed("standard output cannot be written");
    return reportMade;
  } catch (const offline::WrongUsage& error) {
    offline::tellFailure(error.what());
    offline::tell(offline::usageLine());
    return wrongUsage;
  } catch (const std::filesystem::filesystem_error& error) {
    offline::tellFailure(error.path1().string() + ": " + error.code().message());
    return failed;
  } catch (const std::exception& error) {
    offline::tellFailure(error.what());
    return failed;
  }
}
