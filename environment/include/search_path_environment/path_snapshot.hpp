// A path as it was at some moment, kept as a text, so that it can be asked later, or elsewhere, without the disk.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <search_path_environment/export.hpp>
#include <search_path_environment/folder_path.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Quorvex::PathEnvironment {

/// Some bytes are no snapshot, or a damaged one.
class SEARCH_PATH_ENVIRONMENT_EXPORT SnapshotError : public std::runtime_error {
 public:
  /// "line 3: "x" is no entry of a snapshot"
  SnapshotError(std::size_t line, const std::string& reason);
  /// The same of the file `file`, which is shown as it is.
  SnapshotError(const std::string& file, const SnapshotError& error);
  SnapshotError(const SnapshotError&) noexcept = default;
  SnapshotError& operator=(const SnapshotError&) noexcept = default;
  ~SnapshotError() override;

  /// Counted from 1.
  [[nodiscard]] std::size_t GetLine() const noexcept { return line_; }

 private:
  std::size_t line_;
};

/// A value: the path is immutable, and whatever was asked of the path that was kept is answered alike.
///
/// docs/formats/snapshot.md has the grammar of its text.
struct SEARCH_PATH_ENVIRONMENT_EXPORT PathSnapshot {
  std::shared_ptr<const FolderPath> path;  ///< not null
  std::chrono::sys_seconds taken;          ///< when, in UTC

  /// The text of it. Throws fl::filesystem::encoding_error for a name that no bytes stand for, which no disk gives.
  /// O(n).
  [[nodiscard]] std::string ToBytes() const;

  /// The snapshot that `bytes` hold. Folders that are the same on `predecessor`, if there is one, keep the entries that
  /// they have there. Whatever bytes they are, they give just what was kept or throw SnapshotError. O(n).
  [[nodiscard]] static PathSnapshot Parse(std::string_view bytes, const FolderPath* predecessor = nullptr);
};

}  // namespace Quorvex::PathEnvironment
