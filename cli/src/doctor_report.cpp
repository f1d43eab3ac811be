#include "doctor_report.hpp"

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <fl/filesystem/displayed_text.hpp>
#include <iostream>
#include <string>

#include "health_score.hpp"
#include "json_parts.hpp"
#include "labelled_line.hpp"
#include "location_text.hpp"
#include "output.hpp"

namespace vornixpath {

namespace {

namespace json = boost::json;

void WriteLine(const std::string& line) { WriteSafeResult(line, OutputForm::Lines); }

void WriteFinding(const Finding& finding) {
  constexpr std::size_t kWidth = std::string_view("unreadable-folder").size() + 2;
  std::string line = "  " + std::string(NameOf(finding.kind));
  line.resize(2 + kWidth, ' ');
  WriteLine(line + finding.sentence);
  for (const FindingPlace& place : finding.places) {
    WriteLine("    " + ShownText(place.location) + ", folder " + std::to_string(place.number));
  }
  WriteLine("    fix: " + finding.fix.sentence + (finding.fix.command ? ": " + *finding.fix.command : ""));
}

std::string SummaryOf(const DoctorReport& report) {
  const FindingCounts counts = CountsOf(report.findings);
  std::string found;
  const auto add = [&found](std::size_t count, std::string_view thing) {
    if (count != 0) found += (found.empty() ? "" : ", ") + Counted(count, thing);
  };
  add(counts.errors, NameOf(Severity::Error));
  add(counts.warnings, NameOf(Severity::Warning));
  add(counts.notes, NameOf(Severity::Note));
  return "score " + std::to_string(ScoreOf(counts)) + " of 100: " + (found.empty() ? "nothing found" : found);
}

json::object FixToJson(const Fix& fix) {
  json::object object = {{"sentence", fix.sentence}};
  if (fix.command) object["command"] = *fix.command;
  return object;
}

json::object FindingToJson(const Finding& finding) {
  json::array places;
  for (const FindingPlace& place : finding.places) {
    json::object object = ToJson(place.location);
    object["position"] = place.number - 1;
    places.push_back(std::move(object));
  }
  json::object object = {{"kind", NameOf(finding.kind)}, {"severity", NameOf(finding.severity)}};
  if (finding.name) object["name"] = fl::filesystem::to_displayed_text(*finding.name);
  if (finding.grade) object["grade"] = NameOf(*finding.grade);
  object["sentence"] = finding.sentence;
  object["places"] = std::move(places);
  object["fix"] = FixToJson(finding.fix);
  return object;
}

}  // namespace

void WriteAsLines(const DoctorReport& report) {
  const Finding* previous = nullptr;
  for (const Finding& finding : report.findings) {
    if (previous == nullptr || previous->severity != finding.severity) {
      WriteLine(std::string(NameOf(finding.severity)) + 's');
    }
    WriteFinding(finding);
    previous = &finding;
  }
  WriteLine(SummaryOf(report));
}

void WriteAsJson(const DoctorReport& report) {
  const FindingCounts counts = CountsOf(report.findings);
  json::array findings;
  for (const Finding& finding : report.findings) findings.push_back(FindingToJson(finding));
  json::array problems = ToJson(report.problems);
  for (auto& problem : ProblemsToJson(report.packages)) problems.push_back(std::move(problem));
  const json::object document = {
      {"score", ScoreOf(counts)},
      {"counts", {{"errors", counts.errors}, {"warnings", counts.warnings}, {"notes", counts.notes}}},
      {"findings", std::move(findings)},
      {"problems", std::move(problems)}};
  std::cout << json::serialize(document) << '\n';
}

}  // namespace vornixpath
