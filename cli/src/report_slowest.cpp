#include "report_slowest.hpp"

#include <algorithm>

#include "html_text.hpp"
#include "report_ladder.hpp"

namespace vornixpath {

std::vector<FolderTime> SlowestOf(const LoadedPath& path, const TimedEntryFactory& entries) {
  std::vector<FolderTime> times;
  for (const auto& folder : path.GetDistinctFolders().GetKept()) {
    if (path.IsMasked(folder.position)) continue;
    times.push_back({{folder.location, folder.position + 1}, entries.TimeOf(folder.location)});
  }
  std::stable_sort(times.begin(), times.end(),
                   [](const FolderTime& left, const FolderTime& right) { return left.time > right.time; });
  if (times.size() > kSlowestTold) times.erase(times.begin() + kSlowestTold, times.end());
  return times;
}

std::string InMilliseconds(std::chrono::nanoseconds time) {
  const auto microseconds = std::chrono::floor<std::chrono::microseconds>(time).count();
  const std::string thousandths = std::to_string(microseconds % 1000);
  return std::to_string(microseconds / 1000) + '.' + std::string(3 - thousandths.size(), '0') + thousandths + " ms";
}

std::string SlowestHtml(const std::vector<FolderTime>& slowest) {
  std::string html =
      "<section id=\"slowest\"><h2>Slowest to read</h2>\n"
      "<table class=\"slowest\"><caption>How long folders took, with their special folders, when this page was made. "
      "These are the times "
      "of that very run, one folder after the other; the next run has others. All else on this page depends on what "
      "stands on disk alone.</caption>\n"
      "<thead><tr><th scope=\"col\" class=\"n\"><abbr title=\"position\">No.</abbr></th><th scope=\"col\">Folder</th>"
      "<th scope=\"col\" class=\"n\">Time</th></tr></thead>\n<tbody>\n";
  for (const FolderTime& each : slowest) {
    html += "<tr><td class=\"n\">" + RungLink(each.folder.number) + "</td><th scope=\"row\">" +
            HtmlPath(each.folder.location) + "</th><td class=\"n\">" + InMilliseconds(each.time) + "</td></tr>\n";
  }
  return html + "</tbody></table></section>\n";
}

}  // namespace vornixpath
