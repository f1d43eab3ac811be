#include "shadow_arcs.hpp"

#include <algorithm>
#include <cmath>
#include <fl/filesystem/displayed_text.hpp>
#include <map>

#include "html_text.hpp"
#include "labelled_line.hpp"
#include "location_text.hpp"

namespace vornixpath {

namespace {

using foundation::storage::vfs::AbsoluteIRI;

// In units of the picture.
constexpr int kWidth = 480;
constexpr int kSpine = 240;  // where names end and arcs begin
constexpr int kRungHeight = 30;
constexpr int kFarthest = 215;         // of an arc from the spine
constexpr int kNearest = 36;           // likewise
constexpr int kApart = 5;              // arcs leave a rung below its middle and arrive above it
constexpr std::size_t kFewLevels = 8;  // of few folders, arcs would be long and flat
constexpr std::size_t kCounted = 12;   // of more arcs the numbers would cover each other

struct DrawnFolder {
  std::size_t index;  // from the top
  AbsoluteIRI location;
};
using DrawnFolders = std::map<std::size_t, DrawnFolder>;  // by number

DrawnFolders FoldersOfPairs(const std::vector<ShadowPair>& pairs) {
  DrawnFolders folders;
  for (const ShadowPair& pair : pairs) {
    folders.emplace(pair.hiding.number, DrawnFolder{0, pair.hiding.location});
    folders.emplace(pair.hidden.number, DrawnFolder{0, pair.hidden.location});
  }
  std::size_t index = 0;
  for (auto& [number, folder] : folders) folder.index = index++;
  return folders;
}

int MiddleOf(const DrawnFolder& folder) { return static_cast<int>(folder.index) * kRungHeight + kRungHeight / 2; }

// The last name of the folder, cut where it would not fit; by code points, so that UTF-8 stays whole.
std::string ShortName(const AbsoluteIRI& location) {
  constexpr std::size_t kLongest = 26;
  std::string name = fl::filesystem::to_displayed_text(location.getName());
  if (name.empty()) return ShownText(location);
  std::size_t count = 0;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const bool beginsCharacter = (static_cast<unsigned char>(name[i]) & 0xC0U) != 0x80U;
    if (beginsCharacter && ++count > kLongest) return name.substr(0, i) + "\u2026";
  }
  return name;
}

std::string FolderSvg(std::size_t number, const DrawnFolder& folder) {
  const std::string text = std::to_string(number);
  const int y = MiddleOf(folder);
  return "<a href=\"#f" + text + "\"><title>" + HtmlText(ShownText(folder.location)) + "</title><text x=\"" +
         std::to_string(kSpine - 14) + "\" y=\"" + std::to_string(y + 4) + "\" text-anchor=\"end\">" +
         HtmlText(ShortName(folder.location)) + " <tspan class=\"number\">" + text +
         "</tspan></text></a><circle cx=\"" + std::to_string(kSpine) + "\" cy=\"" + std::to_string(y) +
         "\" r=\"4\"/>\n";
}

struct Arc {
  int begin;
  int end;
  int reach;  // of the curve's control points; three quarters of it are reached
};

Arc ArcOf(const ShadowPair& pair, const DrawnFolders& folders) {
  const DrawnFolder& from = folders.at(pair.hiding.number);
  const DrawnFolder& to = folders.at(pair.hidden.number);
  const auto distance = std::max(from.index, to.index) - std::min(from.index, to.index);
  const auto longest = std::max<std::size_t>(kFewLevels, folders.size() - 1);
  const auto reach = kNearest + (kFarthest - kNearest) * static_cast<int>(distance) / static_cast<int>(longest);
  return {MiddleOf(from) + kApart, MiddleOf(to) - kApart, reach * 4 / 3};
}

int StrokeOf(std::size_t names) { return 2 + std::min(4, static_cast<int>(std::log10(static_cast<double>(names)))); }

std::string ArcSvg(const ShadowPair& pair, const Arc& arc) {
  const std::string x = std::to_string(kSpine + 6);
  const std::string control = std::to_string(kSpine + arc.reach);
  const std::string begin = std::to_string(arc.begin);
  const std::string end = std::to_string(arc.end);
  // The curve arrives level, so the arrow's head always looks to the left.
  const std::string head = std::to_string(kSpine + 14);
  return "<g class=\"arc " + std::string(NameOf(GravestOf(pair))) + "\"><title>folder " +
         std::to_string(pair.hiding.number) + " hides " + HiddenInWords(pair) + "</title><path stroke-width=\"" +
         std::to_string(StrokeOf(CountNames(pair))) + "\" d=\"M" + x + ' ' + begin + " C" + control + ' ' + begin +
         ' ' + control + ' ' + end + ' ' + head + ' ' + end + "\"/><polygon points=\"" + x + ',' + end + ' ' + head +
         ',' + std::to_string(arc.end - 5) + ' ' + head + ',' + std::to_string(arc.end + 5) + "\"/></g>\n";
}

std::string CountSvg(const ShadowPair& pair, const Arc& arc) {
  return "<text class=\"count\" text-anchor=\"middle\" x=\"" + std::to_string(kSpine + arc.reach * 3 / 4) + "\" y=\"" +
         std::to_string((arc.begin + arc.end) / 2 + 4) + "\">" + std::to_string(CountNames(pair)) + "</text>\n";
}

}  // namespace

ShadowGrade GravestOf(const ShadowPair& pair) {
  ShadowGrade gravest = ShadowGrade::SameFile;
  for (const GradedShadow& shadow : pair.shadows) gravest = std::max(gravest, shadow.grade);
  return gravest;
}

std::string HiddenInWords(const ShadowPair& pair) {
  const std::string names = Counted(CountNames(pair), "name");
  if (pair.hiding == pair.hidden) return names + " of its own";
  return names + " of folder " + std::to_string(pair.hidden.number);
}

std::string ArcsSvg(const std::vector<ShadowPair>& pairs) {
  const DrawnFolders folders = FoldersOfPairs(pairs);
  const std::string height = std::to_string(static_cast<int>(folders.size()) * kRungHeight);
  std::string svg = "<svg class=\"arcs\" viewBox=\"0 0 " + std::to_string(kWidth) + ' ' + height + "\" width=\"" +
                    std::to_string(kWidth) + "\" height=\"" + height +
                    "\" role=\"img\" aria-label=\"which folder hides names of which; the table below says the same\">\n"
                    "<line class=\"spine\" x1=\"" +
                    std::to_string(kSpine) + "\" x2=\"" + std::to_string(kSpine) + "\" y1=\"0\" y2=\"" + height +
                    "\"/>\n";
  for (const ShadowPair& pair : pairs) svg += ArcSvg(pair, ArcOf(pair, folders));
  for (const auto& [number, folder] : folders) svg += FolderSvg(number, folder);
  if (pairs.size() <= kCounted) {
    for (const ShadowPair& pair : pairs) svg += CountSvg(pair, ArcOf(pair, folders));
  }
  return svg + "</svg>\n";
}

}  // namespace vornixpath
