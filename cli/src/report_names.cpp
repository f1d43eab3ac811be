#include "report_names.hpp"

#include <map>
#include <search_path_utilities/lookup.hpp>
#include <set>

#include "file_location.hpp"
#include "html_text.hpp"
#include "location_text.hpp"
#include "offered_names.hpp"
#include "report_ladder.hpp"

namespace vornixpath {

namespace {

std::set<std::u16string> OfferedNames(const ExaminedPath& examined) {
  std::set<std::u16string> names;
  TypedNames typed(examined.extensions);
  for (const NamePlace& place : PlacesOfNames(examined.path)) {
    if (!place.isUsual) continue;
    ForEachOffer(place, typed, [&](std::u16string_view name, bool isForClass) {
      names.insert(OfferedName(place, name, isForClass));
    });
  }
  return names;
}

// A name in another letter case is a name of its own.
std::map<std::u16string_view, std::set<std::size_t>> FoldersThatHold(const std::vector<ShadowPair>& pairs) {
  std::map<std::u16string_view, std::set<std::size_t>> folders;
  for (const ShadowPair& pair : pairs) {
    for (const GradedShadow& graded : pair.shadows) {
      if (graded.grade != ShadowGrade::LetterCase) folders[graded.shadow.name].insert(pair.hidden.number);
    }
  }
  return folders;
}

std::optional<MeantFile> FileMeantBy(const std::u16string& name, const ExaminedPath& examined) {
  const auto target =
      Quorvex::PathManagement::CreateSearchTargetWithExtensionInFilenamePreferred(name, examined.extensions);
  const auto found = Quorvex::PathManagement::FindFirstFileVisibleOnPath(
      examined.path, target, Quorvex::PathManagement::FilenameMatchingPolicy::Native);
  if (!found) return std::nullopt;
  const auto& entry = *found->GetPathEntry();
  const auto folder = examined.path.GetMainEntryForEntry(entry)->GetAbsoluteIRI();
  return MeantFile{examined.numbers.NumberOf(entry), PlaceWithin(folder, LocationOf(*found))};
}

std::string RowHtml(const MeantName& name) {
  std::string html = "<tr><th scope=\"row\">" + HtmlText(name.name) + "</th><td>";
  html += name.file ? HtmlText(name.file->place) + "</td><td class=\"n\">" + RungLink(name.file->number)
                    : "no file</td><td class=\"n\">";
  html += "</td><td>";
  for (const std::size_t number : name.alsoIn) {
    html += (number == name.alsoIn.front() ? "" : ", ") + RungLink(number);
  }
  return html + "</td></tr>\n";
}

}  // namespace

std::vector<MeantName> NamesOf(const KnownPath& known) {
  const auto holders = FoldersThatHold(known.shadows);
  std::vector<MeantName> names;
  for (const std::u16string& name : OfferedNames(known.examined)) {
    MeantName meant{name, FileMeantBy(name, known.examined), {}};
    if (const auto also = holders.find(name); also != holders.end()) {
      meant.alsoIn.assign(also->second.begin(), also->second.end());
    }
    names.push_back(std::move(meant));
  }
  return names;
}

std::string NamesHtml(const std::vector<MeantName>& names) {
  std::string html =
      "<section id=\"names\"><h2>Every name, and what it means</h2>\n"
      "<div id=\"search\" role=\"search\" hidden><label for=\"wanted\">Find a name</label>\n"
      "<input id=\"wanted\" type=\"search\" autocomplete=\"off\" autocapitalize=\"off\" spellcheck=\"false\">\n"
      "<a id=\"search-link\" href=\"#q=\">link to this search</a>\n"
      "<p id=\"hits\" role=\"status\"></p></div>\n"
      "<table id=\"name-table\" class=\"names\"><caption>Each name is typed as it stands here. Its file is told from "
      "its folder on; \"also in\" has the folders in which that file hides something of the name.</caption>\n"
      "<thead><tr><th scope=\"col\">Name</th><th scope=\"col\">File</th><th scope=\"col\" class=\"n\">Folder</th>"
      "<th scope=\"col\">Also in</th></tr></thead>\n<tbody>\n";
  for (const MeantName& name : names) html += RowHtml(name);
  return html + "</tbody></table></section>\n";
}

}  // namespace vornixpath
