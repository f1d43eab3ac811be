#include "report_shadow_graph.hpp"

#include <algorithm>
#include <numeric>

#include "html_text.hpp"
#include "labelled_line.hpp"
#include "report_ladder.hpp"
#include "shadow_arcs.hpp"
#include "shadows_report.hpp"

namespace vornixpath {

namespace {

// Those with most names, in their old order.
std::vector<ShadowPair> DrawnPairs(const std::vector<ShadowPair>& pairs) {
  if (pairs.size() <= kMostArcs) return pairs;
  std::vector<std::size_t> order(pairs.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&pairs](std::size_t left, std::size_t right) {
    return CountNames(pairs[left]) > CountNames(pairs[right]);
  });
  order.resize(kMostArcs);
  std::sort(order.begin(), order.end());
  std::vector<ShadowPair> drawn;
  drawn.reserve(order.size());
  for (const std::size_t i : order) drawn.push_back(pairs[i]);
  return drawn;
}

std::string PictureHtml(const std::vector<ShadowPair>& pairs) {
  const std::vector<ShadowPair> drawn = DrawnPairs(pairs);
  std::string html = "<figure>" + ArcsSvg(drawn) +
                     "<figcaption>An arrow leads from the folder that hides to the one that is hidden, thicker for "
                     "more names, in the colour of the gravest grade: <span class=\"key same-file\">the same "
                     "file</span>, <span class=\"key identical\">identical</span>, <span class=\"key "
                     "different\">different</span>, <span class=\"key letter-case\">letter case</span>, <span "
                     "class=\"key kind\">kind</span>.";
  if (drawn.size() < pairs.size()) {
    html += " Drawn are the " + std::to_string(drawn.size()) + " of " + std::to_string(pairs.size()) +
            " pairs that have most names.";
  }
  return html + "</figcaption></figure>\n";
}

std::string NameHtml(const ShadowPair& pair, const GradedShadow& graded) {
  const std::string grade(NameOf(graded.grade));
  std::string html = "<li><span class=\"grade " + grade + "\">" + grade + "</span> " + HtmlText(graded.shadow.name) +
                     HtmlText(PlacesInWords(pair, graded.shadow));
  if (!graded.unread.empty()) html += " (" + HtmlText(graded.unread) + ')';
  return html + "</li>\n";
}

std::string FolderCell(const NumberedFolder& folder) {
  return "<td>" + RungLink(folder.number) + " <span class=\"path\">" + HtmlPath(folder.location) + "</span></td>";
}

std::string PairHtml(const ShadowPair& pair) {
  std::string html = "<tr>" + FolderCell(pair.hiding);
  html += pair.hiding == pair.hidden ? "<td>itself</td>" : FolderCell(pair.hidden);
  html += "<td><details><summary>" + Counted(CountNames(pair), "name") + "</summary>\n<ul>\n";
  for (const GradedShadow& graded : pair.shadows) html += NameHtml(pair, graded);
  return html + "</ul></details></td></tr>\n";
}

}  // namespace

std::string ShadowsHtml(const std::vector<ShadowPair>& pairs) {
  std::string html = "<section id=\"shadows\"><h2>What hides what</h2>\n";
  if (pairs.empty()) return html + "<p>Nothing on this path is hidden.</p></section>\n";
  html += PictureHtml(pairs) +
          "<table class=\"pairs\"><caption>The same in words, pair by pair, with the grade of each name: "
          "<code>vornixpath shadows</code> lists it, too.</caption>\n<thead><tr><th scope=\"col\">Hides</th><th "
          "scope=\"col\">Is hidden</th><th scope=\"col\">Names</th></tr></thead>\n<tbody>\n";
  for (const ShadowPair& pair : pairs) html += PairHtml(pair);
  return html + "</tbody></table></section>\n";
}

}  // namespace vornixpath
