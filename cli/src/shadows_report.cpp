#include "shadows_report.hpp"

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <iostream>

#include "file_location.hpp"
#include "json_parts.hpp"
#include "labelled_line.hpp"
#include "location_text.hpp"
#include "output.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;
using fl::filesystem::to_displayed_text;

std::string LineFor(const ShadowPair& pair, const GradedShadow& graded) {
  const std::string grade(NameOf(graded.grade));
  constexpr std::size_t kLongestGrade = 11;
  return "  " + grade + std::string(kLongestGrade - grade.size() + 2, ' ') + to_displayed_text(graded.shadow.name) +
         PlacesInWords(pair, graded.shadow);
}

std::string HeadingFor(const ShadowPair& pair) {
  const std::string count = Counted(CountNames(pair), "name");
  const std::string hiding = ShownText(pair.hiding.location);
  if (pair.hiding == pair.hidden) return hiding + " hides " + count + " of its own";
  return hiding + " hides " + count + " of " + ShownText(pair.hidden.location);
}

json::object FolderToJson(const NumberedFolder& folder) {
  json::object object = ToJson(folder.location);
  object["position"] = folder.number - 1;
  return object;
}

json::object ShadowToJson(const GradedShadow& graded) {
  const Shadow& shadow = graded.shadow;
  json::object hidden = ToJson(shadow.hidden);
  hidden["folder"] = NameOf(shadow.hiddenEntry->GetEntryType());
  hidden["isFolder"] = shadow.hidden == shadow.hiddenEntry->GetAbsoluteIRI();
  json::object object = {{"name", to_displayed_text(shadow.name)},
                         {"grade", NameOf(graded.grade)},
                         {"winner", ToJson(shadow.winner)},
                         {"hidden", std::move(hidden)}};
  if (!graded.unread.empty()) object["unread"] = graded.unread;
  return object;
}

json::object AcceptedToJson(const AcceptedShadow& accepted) {
  return {{"name", to_displayed_text(accepted.name)},
          {"grade", NameOf(accepted.grade)},
          {"hiding", ToJson(accepted.hiding)},
          {"hidden", ToJson(accepted.hidden)},
          {"place", to_displayed_text(accepted.place)}};
}

json::object EffectToJson(const BaselineEffect& effect) {
  json::array gone;
  for (const AcceptedShadow& accepted : effect.gone) gone.push_back(AcceptedToJson(accepted));
  return {{"leftOut", effect.leftOut}, {"gone", std::move(gone)}};
}

}  // namespace

std::string PlacesInWords(const ShadowPair& pair, const Shadow& shadow) {
  const std::string winner = to_displayed_text(PlaceWithin(pair.hiding.location, LocationOf(shadow.winner)));
  const std::string hidden = to_displayed_text(PlaceWithin(pair.hidden.location, shadow.hidden));
  if (winner != hidden)
    return ": " + winner + (shadow.likeness == Likeness::OtherLetterCase ? " would hide " : " hides ") + hidden;
  return winner.find('/') == std::string::npos ? "" : ": " + winner;
}

void WriteAsLines(const ShadowsReport& report) {
  for (const ShadowPair& pair : report.pairs) {
    WriteSafeResult(HeadingFor(pair), OutputForm::Lines);
    for (const GradedShadow& graded : pair.shadows) WriteSafeResult(LineFor(pair, graded), OutputForm::Lines);
  }
}

void WriteAsJson(const ShadowsReport& report) {
  json::array pairs;
  for (const ShadowPair& pair : report.pairs) {
    json::array names;
    for (const GradedShadow& graded : pair.shadows) names.push_back(ShadowToJson(graded));
    pairs.push_back(json::object{
        {"hiding", FolderToJson(pair.hiding)}, {"hidden", FolderToJson(pair.hidden)}, {"names", std::move(names)}});
  }
  json::object document = {{"pairs", std::move(pairs)}, {"problems", ToJson(report.problems)}};
  if (report.baseline) document["baseline"] = EffectToJson(*report.baseline);
  std::cout << json::serialize(document) << '\n';
}

}  // namespace vornixpath
