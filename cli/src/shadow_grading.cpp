#include "shadow_grading.hpp"

#include <foundation/storage/vfs/exception.hpp>
#include <utility>

#include "file_location.hpp"
#include "storage_failure.hpp"

namespace vornixpath {

using foundation::storage::vfs::AbsoluteIRI;

GradedShadow ShadowGrading::operator()(Shadow shadow) {
  if (shadow.likeness == Likeness::OtherKind) return {std::move(shadow), ShadowGrade::Kind, {}};
  if (shadow.likeness == Likeness::OtherLetterCase) return {std::move(shadow), ShadowGrade::LetterCase, {}};
  try {
    const ShadowGrade grade = GradeOfFiles(LocationOf(shadow.winner), shadow.hidden);
    return {std::move(shadow), grade, {}};
  } catch (const foundation::storage::vfs::Exception& failure) {
    return {std::move(shadow), ShadowGrade::Different, InWords(failure)};
  }
}

ShadowGrade ShadowGrading::GradeOfFiles(const AbsoluteIRI& winner, const AbsoluteIRI& hidden) {
  const KnownFile& first = AskOnce(winner);
  const KnownFile second = Ask(hidden);
  const bool isSameStorage = first.storage == second.storage;
  if (isSameStorage && first.status.identity == second.status.identity) return ShadowGrade::SameFile;
  if (first.status.size != second.status.size) return ShadowGrade::Different;
  if (first.status.size == 0) return ShadowGrade::Identical;

  const auto left = first.storage->OpenForReading(winner);
  const auto right = second.storage->OpenForReading(hidden);
  return comparison_.AreEqual(*left, *right) ? ShadowGrade::Identical : ShadowGrade::Different;
}

ShadowGrading::KnownFile ShadowGrading::Ask(const AbsoluteIRI& file) const {
  auto storage = storage_.ProviderFor(file);
  const auto status = storage->Stat(file);
  return {file, std::move(storage), status};
}

const ShadowGrading::KnownFile& ShadowGrading::AskOnce(const AbsoluteIRI& winner) {
  if (!winner_ || winner_->location != winner) {
    winner_.reset();
    winner_ = Ask(winner);
  }
  return *winner_;
}

std::vector<GradedShadow> GradedShadowsOf(const Quorvex::PathManagement::IPath& path,
                                          const std::vector<std::u16string>& extensions,
                                          foundation::storage::vfs::StorageSystemReference storage) {
  ShadowGrading grade(std::move(storage));
  std::vector<GradedShadow> graded;
  for (Shadow& shadow : FindShadows(path, extensions)) graded.push_back(grade(std::move(shadow)));
  return graded;
}

}  // namespace vornixpath
