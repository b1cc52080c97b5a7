#include "report/mask.h"

#include <optional>

#include "report/known_values.h"

namespace reader {
namespace {

// Copies the report, and puts other texts in place of parts of it.
class Replacer {
 public:
  Replacer(std::string_view report, std::ostream& out) : rest_(report), out_(out) {}

  void replace(std::string_view part, const Pseudonym& pseudonym) {
    const auto before = static_cast<std::size_t>(part.data() - rest_.data());
    out_ << rest_.substr(0, before) << textOf(pseudonym);
    rest_.remove_prefix(before + part.size());
  }

  void finish() { out_ << rest_; }

 private:
  std::string_view rest_;
  std::ostream& out_;
};

}  // namespace

void collectValues(const MaskedParts& parts, Pseudonyms& pseudonyms) {
  parts.forEach([&](MaskKind kind, std::string_view value) {
    if (kind != MaskKind::message) pseudonyms.of(kind, value);
  });
}

void writeMasked(const MaskedParts& parts, Pseudonyms& pseudonyms, std::ostream& out) {
  std::optional<KnownValues> known;
  Replacer replacer(parts.report().bytes(), out);
  const auto replace = [&](std::string_view part, const Pseudonym& pseudonym) {
    replacer.replace(part, pseudonym);
  };
  parts.forEach([&](MaskKind kind, std::string_view part) {
    if (kind == MaskKind::message) {
      if (!known) known.emplace(pseudonyms.all());
      known->forEachIn(part, replace);
    } else {
      replace(part, pseudonyms.of(kind, part));
    }
  });
  replacer.finish();
}

}  // namespace reader
