#include "platform/certificate_names.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

#include "platform/ascii.h"

namespace platform {
namespace {

constexpr unsigned char sequence = 0x30;
constexpr unsigned char dnsName = 0x82;
constexpr unsigned char ipAddress = 0x87;

constexpr std::size_t byteAt(std::string_view der, std::size_t index) {
  return static_cast<unsigned char>(der[index]);
}

struct Element {
  std::size_t tag;
  std::string_view content;
};

// Takes the element at the front; nothing if it has no end there.
std::optional<Element> takeElement(std::string_view& der) {
  constexpr std::size_t longForm = 0x80;
  constexpr std::size_t mostLengthBytes = 3;
  if (der.size() < 2) return std::nullopt;
  const std::size_t tag = byteAt(der, 0);
  std::size_t size = byteAt(der, 1);
  der.remove_prefix(2);
  if (size >= longForm) {
    const std::size_t count = size - longForm;
    if (count == 0 || count > mostLengthBytes || count > der.size()) return std::nullopt;
    size = 0;
    for (std::size_t index = 0; index < count; ++index) size = size << 8U | byteAt(der, index);
    der.remove_prefix(count);
  }
  if (size > der.size()) return std::nullopt;
  const Element element{tag, der.substr(0, size)};
  der.remove_prefix(size);
  return element;
}

std::string dotted(std::string_view address) {
  std::string text;
  for (std::size_t index = 0; index < address.size(); ++index) {
    text += (index == 0 ? "" : ".") + std::to_string(byteAt(address, index));
  }
  return text;
}

bool isSameName(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, {}, lowered<char>, lowered<char>);
}

bool isNameFor(std::string_view name, std::string_view host) {
  if (!name.starts_with("*.")) return isSameName(name, host);
  const std::size_t dot = host.find('.');
  return dot != std::string_view::npos && dot > 0 && name.find('.', 2) != std::string_view::npos &&
         isSameName(name.substr(1), host.substr(dot));
}

bool isFor(const Element& name, std::string_view host) {
  const bool isAddress = host.find_first_not_of("0123456789.") == std::string_view::npos;
  if (name.tag == ipAddress) return name.content.size() == 4 && dotted(name.content) == host;
  return name.tag == dnsName && !isAddress && isNameFor(name.content, host);
}

}  // namespace

bool areNamesFor(std::string_view names, std::string_view host) {
  const std::optional<Element> all = takeElement(names);
  if (!all || all->tag != sequence || !names.empty()) return false;
  bool isFound = false;
  for (std::string_view rest = all->content; !rest.empty();) {
    const std::optional<Element> name = takeElement(rest);
    if (!name) return false;
    isFound = isFound || isFor(*name, host);
  }
  return isFound;
}

}  // namespace platform
