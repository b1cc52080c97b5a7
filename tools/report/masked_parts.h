// What of a report is masked.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_set>

#include "report/line_form.h"
#include "report/report.h"

namespace reader {

/// Kinds of pseudonyms; `message` is text in which values may stand, and has none.
enum class MaskKind : std::uint8_t {
  organization,
  person,
  mail,
  domain,
  server,
  replicaId,
  path,
  text,
  message
};
inline constexpr std::size_t pseudonymKinds = 8;

/// The parts of a report that are masked. It leans on the report.
class MaskedParts {
 public:
  explicit MaskedParts(const Report& report);

  const Report& report() const { return report_; }

  using Take = std::function<void(MaskKind, std::string_view)>;

  /// Hands them out in the order of the file; none of them is empty.
  void forEach(const Take& take) const;

 private:
  void takePart(const Value& value, const Take& take) const;
  void takeServerPath(std::string_view value, const Take& take) const;
  std::size_t endOfServer(std::string_view value) const;

  const Report& report_;
  std::unordered_set<std::string_view> oddServers_{};  // whose names end with "!"
};

}  // namespace reader
