// What a tool for files asks of the system: its arguments, streams of plain bytes, whole files.
//
// A name of a file is UTF-8 on Windows and the bytes of the file system elsewhere, as the arguments
// are; it is taken as it is given.
#pragma once

#include <string>
#include <vector>

#include "platform/file_outcome.h"

namespace platform {

/// The program's name and its arguments.
std::vector<std::string> commandLine(int argc, char** argv);

/// Makes standard input and output carry bytes as they are. False if there is no standard output.
/// To be called before anything opens a file.
bool prepareByteStreams();

/// Appends all bytes of the file `name`, or of standard input if that is "-".
FileOutcome readBytes(const std::string& name, std::string& bytes);

}  // namespace platform
