// What a tool for files asks of the system: its arguments, streams of plain bytes, whole files.
//
// A name of a file is UTF-8 on Windows and the bytes of the file system elsewhere, as the arguments
// are; it is taken as it is given.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The program's name and its arguments.
std::vector<std::string> commandLine(int argc, char** argv);

/// Makes standard input and output carry bytes as they are. False if there is no standard output.
/// To be called before anything opens a file.
bool prepareByteStreams();

enum class ReadOutcome { read, missing, failed };

/// Appends all bytes of the file `name`, or of standard input if that is "-".
ReadOutcome readBytes(const std::string& name, std::string& bytes);

/// Puts `bytes` in place of the file `name`: they are written to a new file beside it, which then
/// takes its name. On Linux nobody but its owner may read it; on Windows it has the rights that its
/// folder gives. False leaves the file as it was.
bool replacePrivateFile(const std::string& name, std::string_view bytes);

}  // namespace platform
