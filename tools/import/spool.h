// The notes of all exports, on the disk until their ids are known.
//
// Two files that no folder lists: the notes themselves, and an index with an entry of the same size
// for each. So an import keeps nothing of a note in memory, however many there are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "import/descriptor.h"

namespace dxl {

struct SpooledNote {
  std::uint32_t id = 0;    ///< 0 if it has none.
  std::string profileKey;  ///< Equal for profiles that take each other's place; else empty.
  std::string members;     ///< What stands behind the note id in its line.
  std::uint32_t itemsKept = 0;
  std::uint32_t itemsLeftOut = 0;
};

struct IndexEntry {
  std::uint64_t position = 0;  ///< Of the key, with the members behind it.
  std::uint64_t membersSize = 0;
  std::uint32_t keySize = 0;
  std::uint32_t keyHash = 0;
  std::uint32_t id = 0;
  std::uint32_t isDropped = 0;
  std::uint32_t itemsKept = 0;
  std::uint32_t itemsLeftOut = 0;

  bool isProfile() const { return keySize != 0; }
};

/// A file that is written from its beginning to its end, and then read.
class SpoolFile {
 public:
  explicit SpoolFile(Descriptor file);

  std::uint64_t size() const { return written_ + pending_.size(); }
  void append(std::string_view bytes);
  void flush();

  /// Bytes that are in the file, until the next call. Positions that ascend are read in large
  /// pieces.
  std::string_view read(std::uint64_t position, std::size_t size);

  /// The same without regard to what is read next.
  std::string readAlone(std::uint64_t position, std::size_t size) const;

  void overwrite(std::uint64_t position, std::string_view bytes);

 private:
  Descriptor file_;
  std::uint64_t written_ = 0;
  std::string pending_;
  std::string window_;
  std::uint64_t windowPosition_ = 0;
};

class Spool {
 public:
  /// Makes its files in the folder of `target`. All functions throw ImportFailure.
  explicit Spool(const std::string& target);

  void append(const SpooledNote& note);

  /// Ends the writing.
  void flush();

  std::size_t profiles() const { return profiles_; }
  std::size_t ids() const { return ids_; }

  /// Calls `action` for each note in the order of the exports, with its number from 0.
  void forEach(const std::function<void(std::uint32_t, const IndexEntry&)>& action);

  IndexEntry entry(std::uint32_t number) const;
  void change(std::uint32_t number, const IndexEntry& entry);
  std::string profileKey(const IndexEntry& entry) const;
  std::string_view members(const IndexEntry& entry);

 private:
  SpoolFile notes_;
  SpoolFile index_;
  std::uint32_t count_ = 0;
  std::size_t profiles_ = 0;
  std::size_t ids_ = 0;
};

}  // namespace dxl
