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
/// The text has one entry a line, each a word and what belongs to it:
///
///     snapshot   = "vornixpath-snapshot 1" LF "taken " TIME LF *main *repeat "checksum " 16HEXDIG LF
///     main       = "folder " POSITION " " IRI LF content "end" LF
///     content    = [ "canonical " IRI LF ] [ "ignores-case" LF ] *problem *( "file " NAME LF ) *subfolder
///     problem    = "problem " KIND " " ( "none" / "generic:" NUMBER / "system:" NUMBER ) " " IRI LF
///     subfolder  = "subfolder " NAME LF content "end" LF
///     repeat     = "repeated " POSITION " " IRI LF
///
/// TIME is as in utc_time.hpp, POSITION that of a folder on the path as it was given, from 1; those of the mains go up,
/// and so do those of the repeats. `canonical` stands where the folder is not what it is spelled, `ignores-case` where
/// its storage makes no difference between letter cases. KIND is `missing`, `not-a-folder`, `unreadable`, `loop` or
/// `too-deep`; the number is the system's own,
/// that of an input/output error for errors of other makes. A NAME is UTF-8, or whatever bytes the name has on disk,
/// with '%' and control characters as "%XX". The checksum is XXH3 (64 bits, seed 0) of all bytes before its line.
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
