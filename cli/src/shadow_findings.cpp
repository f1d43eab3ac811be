#include "shadow_findings.hpp"

#include "file_location.hpp"
#include "json_parts.hpp"
#include "output.hpp"

namespace vornixpath {

namespace {

std::string KindOfHidden(const Shadow& shadow) {
  using Quorvex::PathManagement::PathEntryType;
  const PathEntryType kind = shadow.hiddenEntry->GetEntryType();
  const std::string folder = std::string(kind == PathEntryType::Main ? "plain" : NameOf(kind)) + " folder";
  const bool isFolder = shadow.hidden == shadow.hiddenEntry->GetAbsoluteIRI();
  return isFolder ? "a " + folder : "a file in a " + folder;
}

std::string ReasonFor(const GradedShadow& graded) {
  switch (graded.grade) {
    case ShadowGrade::SameFile:
      return "the second is the same file";
    case ShadowGrade::Identical:
      return "it hides the second, of equal content";
    case ShadowGrade::Kind:
      return "it hides the second, " + KindOfHidden(graded.shadow);
    default:
      if (!graded.unread.empty()) return "it hides the second, which could not be compared: " + graded.unread;
      return "it hides the second, of different content";
  }
}

Severity SeverityOf(ShadowGrade grade) { return grade <= ShadowGrade::Identical ? Severity::Note : Severity::Warning; }

Fix FixFor(ShadowGrade grade) {
  if (grade <= ShadowGrade::Identical) return {"delete the second, if nobody needs it"};
  return {"rename one of them, or delete the one that is not meant"};
}

Finding FindingFor(const ShadowPair& pair, const GradedShadow& graded) {
  const Shadow& shadow = graded.shadow;
  return {FindingKind::ShadowedName,
          SeverityOf(graded.grade),
          Quoted(shadow.name) + " means the first: " + ReasonFor(graded),
          {{LocationOf(shadow.winner), pair.hiding.number}, {shadow.hidden, pair.hidden.number}},
          FixFor(graded.grade),
          shadow.name,
          graded.grade};
}

}  // namespace

std::vector<Finding> ShadowedNames(const std::vector<ShadowPair>& pairs) {
  std::vector<Finding> findings;
  for (const ShadowPair& pair : pairs) {
    for (const GradedShadow& graded : pair.shadows) {
      if (graded.grade != ShadowGrade::LetterCase) findings.push_back(FindingFor(pair, graded));
    }
  }
  return findings;
}

}  // namespace vornixpath
