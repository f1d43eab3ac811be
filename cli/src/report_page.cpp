#include "report_page.hpp"

#include <algorithm>
#include <array>

#include "health_score.hpp"
#include "html_text.hpp"
#include "labelled_line.hpp"
#include "page_parts.hpp"
#include "report_file.hpp"
#include "report_findings.hpp"
#include "report_shadow_graph.hpp"

namespace vornixpath {

namespace {

std::string HeadHtml(const ReportFacts& facts) {
  std::string html(kReportBeginning);
  html +=
      "<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src '";
  html.append(kPageStyleHash).append("'; script-src '").append(kPageScriptHash);
  html +=
      "'; base-uri 'none'; form-action 'none'\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<meta name=\"color-scheme\" content=\"light dark\">\n<title>Search path: " +
      HtmlText(facts.origin) + ", " + Counted(facts.ladder.size(), "folder") + "</title>\n<style>";
  return html.append(kPageStyle).append("</style>\n</head>\n");
}

// "7 present, 1 missing".
std::string StatesInWords(const std::vector<Rung>& ladder) {
  constexpr std::array<std::string_view, 5> kStates = {"present", "missing", "unreadable", "repeated", "masked"};
  std::string words;
  for (const std::string_view state : kStates) {
    const auto count =
        std::count_if(ladder.begin(), ladder.end(), [state](const Rung& rung) { return rung.state.word == state; });
    if (count == 0) continue;
    words += (words.empty() ? "" : ", ") + std::to_string(count) + ' ' + std::string(state);
  }
  return words.empty() ? "none" : words;
}

std::string CardHtml(std::string_view label, const std::string& figure, const std::string& words) {
  return "<div><dt>" + std::string(label) + "</dt><dd><b>" + figure + "</b> " + HtmlText(words) + "</dd></div>\n";
}

std::string HeaderHtml(const ReportFacts& facts) {
  const FindingCounts counts = CountsOf(facts.findings);
  const auto hidden = static_cast<std::size_t>(std::count_if(
      facts.names.begin(), facts.names.end(), [](const MeantName& name) { return !name.alsoIn.empty(); }));
  return "<body>\n<header><h1>A search path</h1>\n<p>It comes from <b>" + HtmlText(facts.origin) + "</b>.</p>\n<dl>\n" +
         CardHtml("Folders", std::to_string(facts.ladder.size()), StatesInWords(facts.ladder)) +
         CardHtml("Names", std::to_string(facts.names.size()), std::to_string(hidden) + " hide something") +
         CardHtml("Score", std::to_string(ScoreOf(counts)),
                  "of 100: " + Counted(counts.errors, "error") + ", " + Counted(counts.warnings, "warning") + ", " +
                      Counted(counts.notes, "note")) +
         "</dl>\n<nav aria-label=\"Sections\"><a href=\"#ladder\">Folders</a> <a href=\"#shadows\">What hides what</a> "
         "<a href=\"#findings\">What may be amiss</a> <a href=\"#slowest\">Slowest to read</a> "
         "<a href=\"#names\">Names</a></nav></header>\n";
}

}  // namespace

std::string PageOf(const ReportFacts& facts) {
  std::string page = HeadHtml(facts) + HeaderHtml(facts) + "<main>\n" + LadderHtml(facts.ladder) +
                     ShadowsHtml(facts.shadows) + FindingsHtml(facts.findings) + SlowestHtml(facts.slowest) +
                     NamesHtml(facts.names) + "</main>\n<script>";
  return page.append(kPageScript).append("</script>\n</body>\n</html>\n");
}

}  // namespace vornixpath
