// The value at the end of a document: a scan against a parser that builds a tree.

#include "replay/internet/web_request.h"

#include <malloc.h>

#include <cstdio>
#include <pugixml.hpp>

#include "ratio.h"

namespace {

constexpr std::size_t megabyte = 1'000'000;

std::string documentOf(std::size_t size) {
  std::string document = "<?xml version=\"1.0\"?><reply>";
  document.reserve(size + 200);
  while (document.size() < size) {
    document +=
        "<item id=\"17\"><name>Nordholm Armaturen GmbH</name><state>active</state>"
        "<text>1 &lt; 2 &amp; so on</text></item>";
  }
  return document + "<total>4711</total></reply>";
}

std::string scanned(std::string_view document) {
  std::string value;
  replay::internet::WebRequest::scan_value(document, "reply.total", value);
  return value;
}

std::string parsed(std::string_view document) {
  pugi::xml_document tree;
  tree.load_buffer(document.data(), document.size());
  return tree.child("reply").child_value("total");
}

}  // namespace

int main() {
  // Memory once freed stays with the process: a tree that is given new pages by the system each
  // time takes many times as long.
  mallopt(M_TRIM_THRESHOLD, 1'000'000'000);
  mallopt(M_MMAP_THRESHOLD, 32'000'000);
  const std::string small = documentOf(megabyte);
  const std::string large = documentOf(64 * megabyte);
  if (scanned(small) != "4711" || scanned(large) != "4711" || parsed(small) != "4711") {
    std::puts("the values differ");
    return 1;
  }
  const Subject scan{[&] { return scanned(small).size(); }};
  Comparisons comparisons;
  comparisons.fastEnough("value at the end of 1 MB, pugixml", scan,
                         {[&] { return parsed(small).size(); }}, 1.5);
  comparisons.shortEnough("byte of 64 MB, byte of 1 MB",
                          {[&] { return scanned(large).size(); }, 64}, scan, 3);
  return comparisons.exitStatus();
}
