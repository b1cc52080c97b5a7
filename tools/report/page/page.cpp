#include "report/page/page.h"

#include "report/page/article.h"
#include "report/page/line_choice.h"
#include "report/page/overview.h"
#include "report/page/style.h"

namespace reader {
namespace {

// Nothing is loaded, and nothing runs, whatever a report may hold.
void writeHead(Html& html, const std::string& title) {
  html << "<!DOCTYPE html>\n<html lang=en>\n<head>\n<meta charset=utf-8>\n"
          "<meta http-equiv=Content-Security-Policy content=\"default-src 'none'; style-src "
          "'unsafe-inline'; base-uri 'none'; form-action 'none'\">\n"
          "<meta name=viewport content=\"width=device-width, initial-scale=1\">\n<title>";
  html.text(title) << "</title>\n<style>\n"
                   << pageStyle << "</style>\n</head>\n<body>\n<main>\n<h1>";
  html.text(title) << "</h1>\n";
}

}  // namespace

void writePage(std::vector<ShownReport>& reports, const std::string& title, Origin origin,
               std::ostream& out) {
  for (ShownReport& shown : reports) {
    if (!shown.report) continue;
    shown.findings = findingsOf(*shown.report, origin);
    shown.summary = summaryOf(*shown.report);
  }
  chooseLines(reports);
  Html html(out);
  writeHead(html, title);
  if (reports.size() > 1) writeOverview(html, reports);
  for (const ShownReport* const shown : inOrder(reports)) writeArticle(html, *shown);
  html << "</main>\n</body>\n</html>\n";
}

}  // namespace reader
