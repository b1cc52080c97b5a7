#include "report/mask.h"

#include <functional>
#include <optional>

#include "report/entry_reader.h"
#include "report/known_values.h"

namespace reader {
namespace {

void forEachPart(const Report& report,
                 const std::function<void(MaskKind, std::string_view)>& take) {
  for (EntryNumber number = 0; number < report.entries().size(); ++number) {
    EntryReader reader(report, number);
    for (Reading reading{}; reader.next(reading);)
      forEachMaskedPart(reading, report.isOverwritten(), take);
  }
}

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

void collectValues(const Report& report, Pseudonyms& pseudonyms) {
  forEachPart(report, [&](MaskKind kind, std::string_view value) {
    if (kind != MaskKind::message) pseudonyms.of(kind, value);
  });
}

void writeMasked(const Report& report, Pseudonyms& pseudonyms, std::ostream& out) {
  std::optional<KnownValues> known;
  Replacer replacer(report.bytes(), out);
  const auto replace = [&](std::string_view part, const Pseudonym& pseudonym) {
    replacer.replace(part, pseudonym);
  };
  forEachPart(report, [&](MaskKind kind, std::string_view part) {
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
