// Typed access to the items of an open note, which belongs to the caller.
//
// A reader checks the item's type first, so that a wrong document fails with a sentence that names
// the item. Absence is a failure of the plain readers and an empty text of those named "OrEmpty". A
// write takes effect in memory only; the owner of the note writes it to the database.
#pragma once

#include <string>
#include <vector>

#include "base/error.h"
#include "notes/abi.h"

namespace notes {

class NsfNote {
 public:
  /// A failed read. Of its two kinds `getText` makes its own message, so that it raises neither.
  class NsfNoteError : public base::Error {
   public:
    using Error::Error;
  };
  class NsfNoteInvalidItemType : public NsfNoteError {
   public:
    using NsfNoteError::NsfNoteError;
  };
  class NsfNoteItemNotPresent : public NsfNoteError {
   public:
    using NsfNoteError::NsfNoteError;
  };
  /// A failed write: the library's words alone.
  class DominoApiError : public base::Error {
   public:
    using Error::Error;
  };

  explicit NsfNote(NOTEHANDLE note) : hNote_(note) {}

  /// The status of the last question for a type or a length, or of the last write.
  STATUS lastStatus() const { return lastStatus_; }

  bool isPresent(const std::string& item) const;

  /// The data type of an item; the questions for it raise NsfNoteItemNotPresent as well.
  WORD itemType(const std::string& item) const;
  bool isText(const std::string& item) const { return itemType(item) == TYPE_TEXT; }
  bool isTextList(const std::string& item) const { return itemType(item) == TYPE_TEXT_LIST; }
  bool isNumber(const std::string& item) const { return itemType(item) == TYPE_NUMBER; }
  bool isTime(const std::string& item) const { return itemType(item) == TYPE_TIME; }

  /// The bytes of a value without its type word. Raises NsfNoteItemNotPresent.
  DWORD valueLength(const std::string& item) const;

  /// Whether an item is there and not empty.
  bool hasValue(const std::string& item) const;

  /// The first 1,023 bytes of a text. Raises NsfNoteError.
  std::u16string getText(const std::string& item) const;
  std::u16string getTextOrEmpty(const std::string& item) const;

  /// Adds the entries of a text list, or a single text, to `texts`, which is emptied before on
  /// demand. Raises the two kinds of NsfNoteError, and NsfNoteError.
  void getTextList(const std::string& item, std::vector<std::u16string>& texts,
                   bool clearFirst) const;

  /// Raise the two kinds of NsfNoteError.
  NUMBER getNumber(const std::string& item) const;
  TIMEDATE getTime(const std::string& item) const;

  /// A time in the library's own form. Raises the two kinds of NsfNoteError.
  std::string getTimeText(const std::string& item) const;
  std::string getTimeTextOrEmpty(const std::string& item) const;

  /// Raise DominoApiError. A text counts by the low 16 bits of its length in bytes.
  void setText(const std::string& item, const std::u16string& text);
  void setTextNarrow(const std::string& item, const std::string& text);
  void setNumber(const std::string& item, NUMBER number);
  void setTime(const std::string& item, const TIMEDATE& time);
  void setTimeNow(const std::string& item);

 private:
  void requireWritten(STATUS status);

  mutable STATUS lastStatus_ = 0;  // reading keeps it as well
  NOTEHANDLE hNote_;
};

}  // namespace notes
