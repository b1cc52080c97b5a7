// Start and end, words, settings and paths.
#include "standin/caller_text.h"
#include "standin/exports.h"
#include "standin/guard.h"
#include "standin/network_path.h"
#include "standin/session.h"
#include "standin/status.h"

using namespace standin;

STATUS NOTES_CALL NotesInitExtended(int argc, char** argv) {
  return guard([&] { beginSession(argc, argv); });
}

void NOTES_CALL NotesTerm() { endSession(); }

WORD NOTES_CALL OSLoadString(void*, STATUS code, char* buffer, WORD size) {
  return guardValue(WORD{0}, [&] {
    requireAll(buffer);
    return copyText(wordsForCaller(code), buffer, size);
  });
}

BOOL NOTES_CALL OSGetEnvironmentString(const char* name, char* value, WORD size) {
  return guardValue(BOOL{0}, [&] {
    requireAll(value);
    copyText({}, value, size);
    requireAll(name);
    const std::string* found = session().settings.find(name);
    if (found == nullptr) return BOOL{0};
    copyText(*found, value, size);
    return BOOL{1};
  });
}

WORD NOTES_CALL OSGetDataDirectory(char* path) {
  return guardValue(WORD{0}, [&] {
    requireAll(path);
    return copyText(session().dataDirectory, path, NOTES_PATH_SIZE);
  });
}

void NOTES_CALL OSGetExecutableDirectory(char* path) {
  guard([&] {
    requireAll(path);
    copyText(session().programDirectory, path, NOTES_PATH_SIZE);
  });
}

STATUS NOTES_CALL OSPathNetConstruct(const char* port, const char* server, const char* file,
                                     char* path) {
  return guard([&] {
    requireAll(file, path);
    const std::string ofPort = textFrom(port);
    const std::string ofServer = textFrom(server);
    const std::string ofFile = textFrom(file);
    copyText(composePath({ofPort, ofServer, ofFile}), path, NOTES_PATH_SIZE);
  });
}

STATUS NOTES_CALL OSPathNetParse(const char* path, char* port, char* server, char* file) {
  return guard([&] {
    requireAll(path, port, server, file);
    const std::string copy = textFrom(path);  // a caller may have its path in one of the results
    const NetworkPath parts = parsePath(copy);
    copyText(parts.port, port, NOTES_PATH_SIZE);
    copyText(parts.server, server, NOTES_PATH_SIZE);
    copyText(parts.file, file, NOTES_PATH_SIZE);
  });
}
