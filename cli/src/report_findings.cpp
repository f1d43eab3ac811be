#include "report_findings.hpp"

#include <algorithm>
#include <iterator>
#include <span>

#include "health_score.hpp"
#include "html_text.hpp"
#include "labelled_line.hpp"
#include "report_ladder.hpp"

namespace vornixpath {

namespace {

using Group = std::span<const Finding>;

std::string FindingHtml(const Finding& finding) {
  std::string html = "<li>" + HtmlText(finding.sentence) + "<ul>";
  for (const FindingPlace& place : finding.places) {
    html +=
        "<li><span class=\"path\">" + HtmlPath(place.location) + "</span>, folder " + RungLink(place.number) + "</li>";
  }
  html += "</ul><p>Fix: " + HtmlText(finding.fix.sentence);
  if (finding.fix.command) html += ": <code>" + HtmlText(*finding.fix.command) + "</code>";
  return html + "</p></li>\n";
}

std::string GroupHtml(const Group& group) {
  const Finding& first = group.front();
  const std::string severity(NameOf(first.severity));
  const std::string heading = "<span class=\"severity " + severity + "\">" + severity + "</span> " +
                              std::string(NameOf(first.kind)) + ": " + std::to_string(group.size());
  if (first.kind == FindingKind::ShadowedName) {
    return "<p class=\"group\">" + heading + ", see <a href=\"#shadows\">what hides what</a></p>\n";
  }
  std::string html = "<details class=\"group\"><summary>" + heading + "</summary>\n<ol>\n";
  for (const Finding& finding : group) html += FindingHtml(finding);
  return html + "</ol></details>\n";
}

}  // namespace

std::string FindingsHtml(const std::vector<Finding>& findings) {
  std::string html = "<section id=\"findings\"><h2>What may be amiss</h2>\n<p>The score is " +
                     std::to_string(ScoreOf(CountsOf(findings))) +
                     " of 100, as <code>vornixpath doctor</code> has it: errors make answers wrong, warnings mark what "
                     "may surprise, notes what could be tidier.</p>\n";
  if (findings.empty()) html += "<p>Nothing was found.</p>\n";
  for (auto begin = findings.begin(); begin != findings.end();) {
    const auto end = std::find_if(begin, findings.end(), [begin](const Finding& finding) {
      return finding.severity != begin->severity || finding.kind != begin->kind;
    });
    html += GroupHtml(Group(begin, end));
    begin = end;
  }
  return html + "</section>\n";
}

}  // namespace vornixpath
