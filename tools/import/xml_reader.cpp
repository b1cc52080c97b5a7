#include "import/xml_reader.h"

#include <expat.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <iterator>
#include <memory>
#include <new>
#include <string>

#include "import/encoding.h"
#include "import/failure.h"
#include "import/foreign_file.h"

namespace dxl {
namespace {

constexpr int mostLevels = 256;
constexpr std::size_t pieceSize = std::size_t{64} << 10U;
constexpr char separator = '\n';  // stands in no namespace and no name
constexpr std::string_view namespaceOfExports = "http://www.lotus.com/dxl";

Element elementOf(std::string_view name, const char* const* attributes) {
  const std::size_t mark = name.find(separator);
  if (mark == std::string_view::npos) return {name, true, attributes};
  return {name.substr(mark + 1), name.substr(0, mark) == namespaceOfExports, attributes};
}

// Whether a tag refers to an entity other than the five that XML has, or a character.
bool refersToEntity(std::string_view tag) {
  constexpr std::string_view known[] = {"#", "amp;", "lt;", "gt;", "quot;", "apos;"};
  for (std::size_t at = 0; (at = tag.find('&', at)) != std::string_view::npos;) {
    const std::string_view rest = tag.substr(++at);
    if (std::none_of(std::begin(known), std::end(known),
                     [rest](std::string_view name) { return rest.starts_with(name); }))
      return true;
  }
  return false;
}

// The commonest faults first in words that say what to ask for.
std::string wordsOf(XML_Error error) {
  std::string words = XML_ErrorString(error);
  switch (error) {
    case XML_ERROR_NO_ELEMENTS:
    case XML_ERROR_UNCLOSED_TOKEN:
    case XML_ERROR_UNCLOSED_CDATA_SECTION:
    case XML_ERROR_PARTIAL_CHAR:
      return "the export is cut off, ask for it once more: " + words;
    case XML_ERROR_JUNK_AFTER_DOC_ELEMENT:
      return "more follows behind the export, perhaps another one, cut them apart: " + words;
    case XML_ERROR_MISPLACED_XML_PI:
      return "something stands before the XML declaration, take it away: " + words;
    default:
      return words;
  }
}

class XmlReader {
 public:
  XmlReader(ExportFile& file, ElementHandler& handler);

  void read(const std::function<void(std::uint64_t)>& progress);

  /// The line of the last failure.
  std::uint64_t line() const {
    return failure_ ? failureLine_ : XML_GetCurrentLineNumber(parser_.get());
  }

 private:
  struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  static XmlReader& of(void* self) { return *static_cast<XmlReader*>(self); }

  void watchDocumentType();

  // Nothing may be thrown through the parser, and it goes on a little after it was stopped.
  template <typename Action>
  void guarded(Action action) noexcept {
    if (failure_) return;
    try {
      action();
    } catch (...) {
      failure_ = std::current_exception();
      failureLine_ = XML_GetCurrentLineNumber(parser_.get());
      XML_StopParser(parser_.get(), XML_FALSE);
    }
  }

  void start(const Element& element);
  void requireSmallPart() const;
  std::string_view currentPart() const;
  void parse(std::size_t size, bool isLast);
  std::size_t unfinished() const;

  ExportFile& file_;
  ElementHandler& handler_;
  std::unique_ptr<XML_ParserStruct, Free> parser_;
  Encoding encoding_;
  std::size_t fed_ = 0;
  int levels_ = 0;
  std::exception_ptr failure_;
  std::uint64_t failureLine_ = 0;
};

XmlReader::XmlReader(ExportFile& file, ElementHandler& handler)
    : file_(file), handler_(handler), parser_(XML_ParserCreateNS(nullptr, separator)) {
  if (!parser_) throw std::bad_alloc();
  XML_SetUserData(parser_.get(), this);
  XML_SetElementHandler(
      parser_.get(),
      [](void* self, const char* name, const char** attributes) {
        of(self).guarded([&] { of(self).start(elementOf(name, attributes)); });
      },
      [](void* self, const char*) {
        of(self).guarded([self] {
          of(self).requireSmallPart();
          --of(self).levels_;
          of(self).handler_.end();
        });
      });
  XML_SetCharacterDataHandler(parser_.get(), [](void* self, const char* text, int size) {
    of(self).guarded([&] { of(self).handler_.text({text, static_cast<std::size_t>(size)}); });
  });
  XML_SetCommentHandler(parser_.get(), [](void* self, const char*) {
    of(self).guarded([self] { of(self).requireSmallPart(); });
  });
  XML_SetProcessingInstructionHandler(parser_.get(), [](void* self, const char*, const char*) {
    of(self).guarded([self] { of(self).requireSmallPart(); });
  });
  watchDocumentType();
}

void XmlReader::watchDocumentType() {
  XML_SetXmlDeclHandler(parser_.get(), [](void* self, const char*, const char* encoding, int) {
    if (encoding != nullptr) of(self).guarded([&] { of(self).encoding_.declare(encoding); });
  });
  XML_SetStartDoctypeDeclHandler(
      parser_.get(), [](void* self, const char*, const char*, const char*, int hasInternalSubset) {
        of(self).guarded([&] {
          if (hasInternalSubset != 0) throw Flaw("the document type has an internal subset");
        });
      });
  XML_SetSkippedEntityHandler(parser_.get(), [](void* self, const char* name, int) {
    of(self).guarded([&] { throw Flaw("the entity " + std::string(name) + " is not known"); });
  });
}

void XmlReader::start(const Element& element) {
  requireSmallPart();
  // Behind a document type the parser leaves out of attribute values what it does not know.
  const std::string_view tag = currentPart();
  if (tag.find('&') != std::string_view::npos &&
      (encoding_.isWide() ? refersToEntity(encoding_.narrowed(tag)) : refersToEntity(tag)))
    throw Flaw("an attribute refers to an entity that is not known");
  if (++levels_ > mostLevels)
    throw Flaw("more than " + std::to_string(mostLevels) + " levels of elements");
  handler_.start(element);
}

void XmlReader::requireSmallPart() const {
  if (static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get())) > largestPart)
    throw Flaw("a tag or comment of more than 16 MiB");
}

// The bytes of the tag that the parser is at.
std::string_view XmlReader::currentPart() const {
  int offset = 0;
  int size = 0;
  const char* const buffer = XML_GetInputContext(parser_.get(), &offset, &size);
  if (buffer == nullptr) return {};
  return {buffer + offset, static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get()))};
}

void XmlReader::read(const std::function<void(std::uint64_t)>& progress) {
  for (bool isLast = false; !isLast;) {
    // The parser looks at an unfinished part again from its beginning: pieces grow with it.
    const std::size_t wanted = (std::max(pieceSize, unfinished()) + 1) / 2 * 2;
    char* const buffer = static_cast<char*>(XML_GetBuffer(parser_.get(), static_cast<int>(wanted)));
    if (buffer == nullptr) throw std::bad_alloc();
    const std::size_t count = file_.read(buffer, wanted);
    isLast = count < wanted;
    if (fed_ == 0) requireXml({buffer, count});
    if (fed_ == 0) encoding_.begin({buffer, count});
    const std::size_t valid = encoding_.validPart({buffer, count});
    parse(valid, isLast && valid == count);
    if (valid < count) throw Flaw("a surrogate that is no half of a pair");
    if (!isLast && unfinished() > largestPart) throw Flaw("a tag or comment of more than 16 MiB");
    progress(fed_);
  }
}

void XmlReader::parse(std::size_t size, bool isLast) {
  fed_ += size;
  const XML_Status status =
      XML_ParseBuffer(parser_.get(), static_cast<int>(size), isLast ? XML_TRUE : XML_FALSE);
  if (failure_) std::rethrow_exception(failure_);
  if (status == XML_STATUS_ERROR) throw Flaw(wordsOf(XML_GetErrorCode(parser_.get())));
}

// How many bytes the parser has that are no whole tag, comment or text yet.
std::size_t XmlReader::unfinished() const {
  const XML_Index done = XML_GetCurrentByteIndex(parser_.get());
  return done < 0 ? fed_ : fed_ - static_cast<std::size_t>(done);
}

}  // namespace

const char* Element::find(std::string_view wanted) const {
  for (const char* const* at = attributes; *at != nullptr; at += 2)
    if (*at == wanted) return at[1];
  return nullptr;
}

std::string_view Element::attribute(std::string_view wanted) const {
  const char* const value = find(wanted);
  return value == nullptr ? std::string_view() : value;
}

void readXml(ExportFile& file, ElementHandler& handler,
             const std::function<void(std::uint64_t)>& progress) {
  XmlReader reader(file, handler);
  try {
    reader.read(progress);
    file.requireState(file.state());
  } catch (const Flaw& flaw) {
    file.requireState(file.state());
    throw ImportFailure(file.path() + ':' + std::to_string(reader.line()) + ": " + flaw.what());
  }
}

}  // namespace dxl
