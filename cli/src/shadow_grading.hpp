#pragma once

#include <foundation/storage/vfs/storage_system.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "content_comparison.hpp"
#include "shadow.hpp"
#include "shadow_grade.hpp"

namespace vornixpath {

/// A grade, and why files could not be compared where that is the reason for it.
struct GradedShadow {
  Shadow shadow;
  ShadowGrade grade;
  std::string unread;  ///< safe for a terminal; empty for all others
};

/// Asks storage about files that share a name. Not safe from several threads.
class ShadowGrading {
 public:
  explicit ShadowGrading(foundation::storage::vfs::StorageSystemReference storage) : storage_(std::move(storage)) {}

  /// A file is asked about only when it shares its name with one in a folder of the same kind, and its content is read
  /// only when both have the same size, other than none, and are not one file. A winner is asked about once for all
  /// that follow each other. What storage refuses is no exception but a grade.
  [[nodiscard]] GradedShadow operator()(Shadow shadow);

 private:
  struct KnownFile;

  [[nodiscard]] ShadowGrade GradeOfFiles(const foundation::storage::vfs::AbsoluteIRI& winner,
                                         const foundation::storage::vfs::AbsoluteIRI& hidden);
  [[nodiscard]] KnownFile Ask(const foundation::storage::vfs::AbsoluteIRI& file) const;
  [[nodiscard]] const KnownFile& AskOnce(const foundation::storage::vfs::AbsoluteIRI& winner);

  struct KnownFile {
    foundation::storage::vfs::AbsoluteIRI location;
    std::shared_ptr<foundation::storage::vfs::IStorageProvider> storage;
    foundation::storage::vfs::FileStatus status;
  };

  foundation::storage::vfs::StorageSystemReference storage_;
  std::optional<KnownFile> winner_;
  ContentComparison comparison_;
};

/// What FindShadows tells, graded, in the same order.
[[nodiscard]] std::vector<GradedShadow> GradedShadowsOf(const Quorvex::PathManagement::IPath& path,
                                                        const std::vector<std::u16string>& extensions,
                                                        foundation::storage::vfs::StorageSystemReference storage);

}  // namespace vornixpath
