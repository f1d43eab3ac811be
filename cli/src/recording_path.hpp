#pragma once

#include <memory>
#include <search_path_interfaces/path.hpp>
#include <string>
#include <vector>

#include "lookup_step.hpp"

namespace vornixpath {

/// A path that notes what a lookup asks it, and passes every question on. For one lookup on one thread.
///
/// It notes four questions, and its entries two, their private folder and their first file. A lookup asks no others: it
/// takes the folder asked from by its location, class folders by name, and everything else by scope, and has the path
/// decide which of two hits stands first. The other questions list or walk a path, and no lookup does so itself.
///
/// The entries handed out for a location or a class name record in their turn, and are taken back as the entries they
/// stand for; `OriginalOf` gives the latter. Without a recorder a lookup pays nothing: it asks the path itself.
class RecordingPath final : public Quorvex::PathManagement::IPath {
 public:
  /// `path` must outlive this object.
  explicit RecordingPath(const Quorvex::PathManagement::IPath& path);

  /// What was asked so far, in order.
  [[nodiscard]] const LookupSteps& GetSteps() const noexcept { return *steps_; }

  [[nodiscard]] std::shared_ptr<const std::vector<EntryPtr>> GetMainEntries() const override;
  [[nodiscard]] std::vector<EntryPtr> GetMethodEntries() const override;

  /// Noted.
  [[nodiscard]] std::vector<EntryPtr> GetMethodEntriesByName(
      Quorvex::PathManagement::SearchScope scope, const std::u16string& name,
      Quorvex::PathManagement::FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<EntryPtr> GetPartiallyMatchingEntries(
      Quorvex::PathManagement::SearchScope scope, const std::u16string& partialPathname,
      Quorvex::PathManagement::FilenameMatchingPolicy policy) const override;
  [[nodiscard]] EntryPtr GetMainEntryForEntry(const Quorvex::PathManagement::IPathEntry& entry) const override;
  [[nodiscard]] EntryPtr GetParentEntryForEntry(const Quorvex::PathManagement::IPathEntry& entry) const override;

  /// Noted.
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::AbsoluteIRI& location,
      Quorvex::PathManagement::FilenameMatchingPolicy policy) const override;
  [[nodiscard]] EntryPtr GetPathEntryFromAbsoluteIRI(
      const foundation::storage::vfs::CanonicalAbsoluteIRI& location) const override;

  /// Noted.
  [[nodiscard]] boost::optional<Quorvex::PathManagement::FoundItem> FindFirstInScope(
      Quorvex::PathManagement::SearchScope scope, const Quorvex::PathManagement::detail::SearchTarget& target,
      Quorvex::PathManagement::FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<Quorvex::PathManagement::FoundItem> FindAllInScope(
      Quorvex::PathManagement::SearchScope scope, const Quorvex::PathManagement::detail::SearchTarget& target,
      Quorvex::PathManagement::FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(Quorvex::PathManagement::SearchScope scope,
                    const Quorvex::PathManagement::PathEntryCallback& callback) const override;
  bool ConcurrentForEachEntry(Quorvex::PathManagement::SearchScope scope,
                              const Quorvex::PathManagement::PathEntryCallback& callback) const override;

  /// Noted, if both are on the path.
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const Quorvex::PathManagement::IPathEntry& first,
                                                    const Quorvex::PathManagement::IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const Quorvex::PathManagement::IPathEntry& entry) const override;

 private:
  const Quorvex::PathManagement::IPath& path_;
  std::shared_ptr<LookupSteps> steps_;
};

}  // namespace vornixpath
