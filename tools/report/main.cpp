#include <iostream>

#include "platform/byte_files.h"
#include "platform/process.h"
#include "report/command_line.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  if (!platform::prepareByteStreams()) std::cout.setstate(std::ios::badbit);
  platform::prepareProcess();
  auto arguments = platform::commandLine(argc, argv);
  if (!arguments.empty()) arguments.erase(arguments.begin());
  return reader::runCommand(arguments);
}
