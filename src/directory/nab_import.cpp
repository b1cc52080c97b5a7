#include "directory/nab_import.h"

#include <utility>

#include "base/text.h"
#include "directory/read_directory.h"

namespace directory::NAB {
namespace {

using base::numberToText;

constexpr unsigned entryIndent = 2;

}  // namespace

std::u16string ImportResult::print(unsigned indent) const {
  const std::u16string newLine = base::newLine(indent);
  std::u16string text = u"\n";
  const auto add = [&](std::u16string_view label, std::int32_t number) {
    text.append(newLine).append(label).append(numberToText(number));
  };
  add(u"IMPORT RESULT:", processed);  // which stands twice
  add(u"Processed.: ", processed);
  add(u"Failed....: ", failed);
  add(u"Updated...: ", updated);
  add(u"Created...: ", created);
  text.append(newLine).append(u"MESSAGES:");
  for (const std::u16string& message : messages)
    text.append(base::newLine(indent + 1)).append(message);
  return text;
}

NabImport::NabImport(std::int32_t batchSize, std::u16string server, bool useNamesOnly,
                     bool simulate)
    : simulate_(simulate),
      serverName_(std::move(server)),
      batchSize_(batchSize),
      useNamesOnly_(useNamesOnly) {}

bool NabImport::step() {
  stepLines_.clear();
  result_ = {};
  if (entries_.empty()) {
    loadDirectory();
  } else {
    importBatch();
  }
  return stepLines_.empty();
}

// Entries read before a failure stay.
void NabImport::loadDirectory() {
  try {
    defaultProfile_.load();
    addressBooks_.reset();
    addressBooks_.load(serverName_, useNamesOnly_);
    for (const AddressBook& book : addressBooks_.books()) {
      ReadDirectory::readDirectory(entries_, book, ReadDirectory::personType, stepLines_);
      ReadDirectory::readDirectory(entries_, book, ReadDirectory::databaseType, stepLines_);
    }
  } catch (const ReadDirectory::ReadDirectoryError& error) {
    stepLines_.push_back(u"ReadDirectoryError: " + error.message());
  } catch (const AddressBooks::AddressBooksError& error) {
    stepLines_.push_back(u"AddressBooksError: " + error.message());
  } catch (const DefaultRecipientProfile::DefaultRecipientProfileError& error) {
    stepLines_.push_back(u"Could not load Default Recipient Profile: " + error.message());
  }
}

void NabImport::importBatch() {
  for (std::int32_t count = 0; count < batchSize_ && !entries_.empty(); ++count) {
    DirectoryEntry& entry = entries_.front();
    try {
      entry.prepare();
      if (entry.readyForImport()) {
        importEntry(entry);
      } else {
        ++result_.failed;
      }
    } catch (const DirectoryEntry::DirectoryEntryError& error) {
      result_.messages.push_back(error.message());
    } catch (const NabImportUpdateOrCreateError& error) {
      result_.messages.push_back(error.message());
    }
    ++result_.processed;
    entries_.pop_front();
  }
}

void NabImport::importEntry(const DirectoryEntry& entry) {
  const std::string replicaIdNarrow = base::toUtf8(entry.replicaId());
  try {
    const NOTEID id = GetUserByReplicaId::find(replicaIdNarrow);
    if (simulate_) {
      stepLines_.push_back(entry.print(entryIndent));
    } else if (id == 0) {
      createProfile(entry);
    } else {
      updateProfile(entry, id);
    }
  } catch (const GetUserByReplicaId::GetUserByReplicaIdError& error) {
    throw NabImportUpdateOrCreateError(u"Get User By replicaId failed: " + error.message());
  } catch (const NabImportUpdateError& error) {
    throw NabImportUpdateOrCreateError(u"Update error: " + error.message());
  } catch (const NabImportCreateError& error) {
    throw NabImportUpdateOrCreateError(u"Create error: " + error.message());
  }
}

void NabImport::print(std::u16string& out, unsigned indent) const {
  const std::u16string newLine = base::newLine(indent);
  const std::u16string books = addressBooks_.print(indent);
  const std::u16string outcome = result_.print(indent);
  std::size_t size = out.size() + newLine.size() + books.size() + outcome.size();
  for (const std::u16string& line : stepLines_) size += newLine.size() + line.size();
  out.reserve(size);
  out.append(newLine).append(books);
  for (const std::u16string& line : stepLines_) out.append(newLine).append(line);
  out.append(outcome);
}

}  // namespace directory::NAB
