#include "report/page/bars.h"

#include <algorithm>

namespace reader {
namespace {

// Parts of the picture's width, which fits any screen.
constexpr std::uint64_t fullWidth = 1000;

std::uint64_t widthOf(const Bar& bar, std::uint64_t most) {
  if (most == 0) return 0;
  const auto part = static_cast<double>(bar.number) / static_cast<double>(most);
  return static_cast<std::uint64_t>(part * static_cast<double>(fullWidth));
}

}  // namespace

void writeBars(Html& html, const std::vector<Bar>& bars) {
  const auto largest = std::ranges::max_element(bars, {}, &Bar::number);
  const std::uint64_t most = largest == bars.end() ? 0 : largest->number;
  html << "<ul class=bars>";
  for (const Bar& bar : bars) {
    html << "<li><span>";
    html.text(bar.label) << " ";
    html.number(bar.number) << "</span>"
                            << "<svg viewBox=\"0 0 1000 10\" preserveAspectRatio=none "
                               "aria-hidden=true focusable=false><rect height=10 width=\"";
    html.number(widthOf(bar, most)) << "\"/></svg>";
  }
  html << "</ul>\n";
}

}  // namespace reader
