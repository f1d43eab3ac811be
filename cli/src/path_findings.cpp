#include "path_findings.hpp"

#include <algorithm>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <foundation/storage/vfs/storage_system.hpp>
#include <iterator>

#include "case_twins.hpp"
#include "empty_folders.hpp"
#include "folder_findings.hpp"
#include "forbidden_names.hpp"
#include "shadow_findings.hpp"
#include "spread_folders.hpp"

namespace vornixpath {

namespace {

using Quorvex::PathEnvironment::DistinctFolders;
using Quorvex::PathEnvironment::DroppedFolder;

// Those of folders in sight.
std::vector<DroppedFolder> RepeatsOf(const LoadedPath& path) {
  std::vector<DroppedFolder> repeats = path.GetDistinctFolders().GetDropped();
  std::erase_if(repeats, [&path](const DroppedFolder& repeat) { return path.IsMasked(repeat.stayingPosition); });
  return repeats;
}

// Findings of one kind after the other, then most severe first.
class Findings {
 public:
  void Add(std::vector<Finding> more) {
    findings_.insert(findings_.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
  }

  [[nodiscard]] std::vector<Finding> InOrder() && {
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const Finding& left, const Finding& right) { return left.severity < right.severity; });
    return std::move(findings_);
  }

 private:
  std::vector<Finding> findings_;
};

}  // namespace

FolderRemoval RemovalFor(const PathOptions& options, const LoadedPath& path, const Packages& packages) {
  const DistinctFolders& folders = path.GetDistinctFolders();
  const std::size_t count = folders.GetKept().size() + folders.GetDropped().size();
  const std::string folder =
      fl::filesystem::to_displayed_text(fl::filesystem::from_bytes(options.packages.value_or("")));
  return {OriginOf(options), !options.session.has_value(), count - FoldersOf(packages).size(), folder};
}

std::vector<ShadowPair> ShadowsOf(const ExaminedPath& examined) {
  const auto storage = foundation::storage::vfs::VornixStorageSystem::GetStorageSystemReference();
  return PairsOf(GradedShadowsOf(examined.path, examined.extensions, storage), examined.path, examined.numbers);
}

std::vector<Finding> FindingsOf(const KnownPath& known, const FolderRemoval& removal) {
  Findings findings;
  findings.Add(UnusableFolders(known.examined, known.troubles, removal));
  findings.Add(RepeatedFolders(RepeatsOf(known.path), removal));
  findings.Add(EmptyFolders(known.examined, known.troubles, removal));
  findings.Add(SpreadFolders(known.examined));
  findings.Add(ShadowedNames(known.shadows));
  findings.Add(LetterCaseTwins(known.examined));
  findings.Add(ForbiddenNames(known.examined));
  return std::move(findings).InOrder();
}

}  // namespace vornixpath
