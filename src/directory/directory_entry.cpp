#include "directory/directory_entry.h"

#include <utility>

#include "base/text.h"
#include "notes/domino_api_tools.h"
#include "notes/network_path.h"
#include "notes/nsf_db_connection.h"

namespace directory {
namespace {

using notes::NsfDbConnection;
using notes::NsfNote;
using notes::DominoApiTools::DominoApiError;
using notes::DominoApiTools::DominoApiToolsError;
using notes::DominoApiTools::errorText;

}  // namespace

DirectoryEntry::DirectoryEntry(const NsfNote& note) {
  try {
    type_ = note.getTextOrEmpty("Type");
    if (type_ == u"Person") {
      readPerson(note);
    } else if (type_ == u"Database") {
      readDatabase(note);
    } else if (type_.empty()) {
      throw DirectoryEntryError(u"Directory Type not set.");
    } else {
      throw DirectoryEntryError(u"Unknown directory-entry type: " + type_);
    }
  } catch (const NsfNote::NsfNoteError& error) {
    throw DirectoryEntryError(u"Could not read directory entry: " + error.message());
  }
}

const DirectoryEntry::Late& DirectoryEntry::late() const {
  static const Late nothing;
  return late_ ? *late_ : nothing;
}

DirectoryEntry::Late& DirectoryEntry::late() {
  if (!late_) late_ = std::make_unique<Late>();
  return *late_;
}

void DirectoryEntry::fail(const DirectoryEntryError& error) {
  late().status = error.message();
  readyForImport_ = false;
}

void DirectoryEntry::readPerson(const NsfNote& note) {
  readMailFile(note);
  std::vector<std::u16string> fullNames;
  try {
    note.getTextList("FullName", fullNames, true);
  } catch (const NsfNote::NsfNoteError& error) {
    throw DirectoryEntryError(u"Note error: " + error.message());
  }
  for (const std::u16string& name : fullNames) fullName_ += name;
}

void DirectoryEntry::readDatabase(const NsfNote& note) {
  try {
    readMailFile(note);
  } catch (const NsfNote::NsfNoteError& error) {
    throw DirectoryEntryError(u"Could not read database Directory entry: " + error.message());
  }
}

void DirectoryEntry::readMailFile(const NsfNote& note) {
  mailServer_ = note.getTextOrEmpty("MailServer");
  filePath_ = note.getTextOrEmpty("MailFile");
}

void DirectoryEntry::prepare() {
  try {
    if (filePath_.empty()) throw DirectoryEntryError(u"Filepath not set.");
    addExtension();
    const std::string path = networkPath();
    notes::OpenDatabase open;
    const STATUS status = open.openExtended(path);
    if (status != 0) {
      throw DirectoryEntryError(u"NSFDbOpenExtended failed (Path: " +
                                base::toWideFromLocal(path.c_str()) + u"): " + errorText(status));
    }
    readMailDatabase(open);
  } catch (const DirectoryEntryError& error) {
    fail(error);
    throw;
  }
}

// The case of the ending counts: "NSF" gets ".nsf" behind it.
void DirectoryEntry::addExtension() {
  constexpr std::size_t endingSize = 3;
  const std::u16string ending = filePath_.substr(filePath_.size() - endingSize);
  if (ending != u"nsf" && ending != u"ntf") filePath_ += u".nsf";
}

std::string DirectoryEntry::networkPath() const {
  const std::string filePathNarrow = base::toUtf8(filePath_);
  std::string path;
  const STATUS status = notes::constructPath(base::toUtf8(mailServer_), filePathNarrow, path);
  if (status != 0) {
    throw DirectoryEntryError(u"OSPathNetConstruct failed: " + errorText(status));
  }
  return path;
}

void DirectoryEntry::readMailDatabase(const notes::OpenDatabase& open) {
  try {
    NsfDbConnection connection(open);
    late().replicaId = notes::DominoApiTools::replicaId(connection.handle());
    late().name = notes::DominoApiTools::databaseTitle(connection.handle());
    connection.close();
  } catch (const DominoApiToolsError& error) {
    throw DirectoryEntryError(u"Could not read replicaId: " + error.message());
  } catch (const DominoApiError& error) {
    throw DirectoryEntryError(u"Could not read dbtitle: " + error.message());
  } catch (const NsfDbConnection::DbConnectionError& error) {
    throw DirectoryEntryError(u"Could not close dbconnection: " + error.message());
  }
}

std::u16string DirectoryEntry::print(unsigned indent) const {
  using namespace std::string_view_literals;
  const std::u16string start = base::newLine(indent);
  const std::pair<std::u16string_view, std::u16string_view> fields[] = {
      {u"Type............: "sv, type_},
      {u"ReplicaId.......: "sv, replicaId()},
      {u"Server name.....: "sv, mailServer_},
      {u"Filepath........: "sv, filePath_},
      {u"Name............: "sv, name()},
      {u"Full name.......: "sv, fullName_},
      {u"Status..........: "sv, late().status},
      {u"Ready for import: "sv, readyForImport_ ? u"Yes" : u"No"}};
  std::u16string text = u"DIRECTORY ENTRY:";
  std::size_t size = text.size();
  for (const auto& [label, value] : fields) size += start.size() + label.size() + value.size();
  text.reserve(size);
  for (const auto& [label, value] : fields) text.append(start).append(label).append(value);
  return text;
}

}  // namespace directory
