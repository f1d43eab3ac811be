#include "report_ladder.hpp"

#include <algorithm>
#include <map>

#include "html_text.hpp"
#include "labelled_line.hpp"
#include "location_text.hpp"
#include "offered_names.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathEnvironment::DroppedFolder;
using Quorvex::PathEnvironment::KeptFolder;
using Quorvex::PathEnvironment::PathProblem;
using Quorvex::PathManagement::PathEntryType;

using Rungs = std::map<std::size_t, Rung>;  // by number

Rungs BareRungs(const LoadedPath& path) {
  Rungs rungs;
  const auto& folders = path.GetDistinctFolders();
  for (const KeptFolder& kept : folders.GetKept()) {
    const FolderState state = path.IsMasked(kept.position) ? FolderState{"masked", ""} : FolderState{"present", ""};
    rungs.emplace(kept.position + 1, Rung{kept.position + 1, kept.location, state, {}});
  }
  for (const DroppedFolder& dropped : folders.GetDropped()) {
    rungs.emplace(dropped.position + 1, Rung{dropped.position + 1, dropped.location, StateOf(dropped), {}});
  }
  return rungs;
}

void AddTroubles(const std::vector<PathProblem>& troubles, Rungs& rungs) {
  for (const PathProblem& trouble : troubles) {
    Rung& rung = rungs.at(trouble.position + 1);
    if (trouble.location == rung.location) {
      rung.state = StateOf(trouble);
    } else {
      rung.remarks.push_back(ShownText(trouble.location) + ": " + ReasonOf(trouble));
    }
  }
}

void CountContents(const ExaminedPath& examined, Rungs& rungs) {
  TypedNames typed(examined.extensions);
  for (const NamePlace& place : PlacesOfNames(examined.path)) {
    if (!place.isUsual) continue;
    Rung& rung = rungs.at(examined.numbers.NumberOf(*place.entry));
    const PathEntryType kind = place.entry->GetEntryType();
    rung.packages += kind == PathEntryType::Package ? 1 : 0;
    rung.classes += kind == PathEntryType::Class ? 1 : 0;
    ForEachOffer(place, typed, [&rung](std::u16string_view /*name*/, bool /*isForClass*/) { ++rung.files; });
  }
}

void CountShadows(const std::vector<ShadowPair>& pairs, Rungs& rungs) {
  for (const ShadowPair& pair : pairs) {
    rungs.at(pair.hidden.number).hidden += CountNames(pair);
    if (pair.hiding != pair.hidden) rungs.at(pair.hiding.number).hides += CountNames(pair);
  }
}

/// Widths of bars: the longest is a thousand.
class Scale {
 public:
  explicit Scale(const std::vector<Rung>& ladder) {
    for (const Rung& rung : ladder) most_ = std::max({most_, rung.files, rung.hides});
  }

  // What is more than nothing can be seen.
  [[nodiscard]] std::size_t WidthOf(std::size_t count) const {
    return count == 0 ? 0 : std::max<std::size_t>(count * 1000 / most_, 6);
  }

 private:
  std::size_t most_ = 1;
};

std::string BarPart(const char* kind, std::size_t begin, std::size_t width, const char* vertical) {
  if (width == 0) return "";
  return std::string("<rect class=\"") + kind + "\" x=\"" + std::to_string(begin) + "\" width=\"" +
         std::to_string(width) + "\" " + vertical + "/>";
}

// The table says the same in numbers.
std::string BarHtml(const Rung& rung, const Scale& scale) {
  if (rung.files + rung.hides == 0) return "";
  const std::size_t all = scale.WidthOf(rung.files);
  const std::size_t hidden = std::min(scale.WidthOf(rung.hidden), all);
  return "<svg class=\"bar\" viewBox=\"0 0 1000 16\" preserveAspectRatio=\"none\" aria-hidden=\"true\">" +
         BarPart("seen", 0, all - hidden, "y=\"0\" height=\"9\"") +
         BarPart("hidden", all - hidden, hidden, "y=\"0\" height=\"9\"") +
         BarPart("hides", 0, scale.WidthOf(rung.hides), "y=\"11\" height=\"5\"") + "</svg>";
}

std::string RemarksHtml(const Rung& rung) {
  std::string specials;
  if (rung.packages != 0) specials = Counted(rung.packages, "package");
  if (rung.classes != 0) {
    specials +=
        (specials.empty() ? "" : ", ") + std::to_string(rung.classes) + (rung.classes == 1 ? " class" : " classes");
  }
  std::string html;
  const auto add = [&html](const std::string& remark) { html += "<br><small>" + HtmlText(remark) + "</small>"; };
  if (!specials.empty()) add(specials);
  if (!rung.state.reason.empty()) add(rung.state.reason);
  for (const std::string& remark : rung.remarks) add(remark);
  return html;
}

std::string RungHtml(const Rung& rung, const Scale& scale) {
  const std::string number = std::to_string(rung.number);
  std::string html = "<tr class=\"rung " + rung.state.word + "\" id=\"f" + number + "\"><td class=\"n\">" + number +
                     "</td><th scope=\"row\"><span class=\"path\">" + HtmlPath(rung.location) +
                     "</span> <span class=\"state\">" + HtmlText(rung.state.word) + "</span>" + RemarksHtml(rung) +
                     BarHtml(rung, scale) + "</th>";
  for (const std::size_t count : {rung.files, rung.hidden, rung.hides}) {
    html += "<td class=\"n\">" + std::to_string(count) + "</td>";
  }
  return html + "</tr>\n";
}

}  // namespace

std::vector<Rung> LadderOf(const KnownPath& known) {
  Rungs rungs = BareRungs(known.path);
  AddTroubles(known.troubles, rungs);
  CountContents(known.examined, rungs);
  CountShadows(known.shadows, rungs);
  std::vector<Rung> ladder;
  for (auto& [number, rung] : rungs) ladder.push_back(std::move(rung));
  return ladder;
}

std::string LadderHtml(const std::vector<Rung>& ladder) {
  std::string html =
      "<section id=\"ladder\"><h2>The folders, in order</h2>\n"
      "<table class=\"ladder\"><caption>Where several folders offer a name, an earlier one wins as a rule. Files are "
      "those that "
      "offer a name; the bar below a folder shows them <span class=\"key seen\">found</span> and <span class=\"key "
      "hidden\">hidden</span> by another folder, and how many names of other folders it <span class=\"key "
      "hides\">hides</span>.</caption>\n"
      "<thead><tr><th scope=\"col\" class=\"n\"><abbr title=\"position\">No.</abbr></th><th scope=\"col\">Folder</th>"
      "<th scope=\"col\" class=\"n\">Files</th><th scope=\"col\" class=\"n\">Hidden</th><th scope=\"col\" "
      "class=\"n\">Hides</th></tr></thead>\n<tbody>\n";
  const Scale scale(ladder);
  for (const Rung& rung : ladder) html += RungHtml(rung, scale);
  return html + "</tbody></table></section>\n";
}

std::string RungLink(std::size_t number) {
  const std::string text = std::to_string(number);
  return "<a href=\"#f" + text + "\">" + text + "</a>";
}

}  // namespace vornixpath
