// A tree of folders, files and links under one lock. Each operation is one critical section, so that others see all of
// it or nothing.
#pragma once

#include <chrono>
#include <condition_variable>
#include <foundation/storage/vfs/memory_storage_provider.hpp>
#include <mutex>
#include <optional>
#include <span>

#include "memory_node.hpp"
#include "operation.hpp"

namespace foundation::storage::vfs::detail {

class MemoryTree {
 public:
  explicit MemoryTree(NameComparison comparison);
  MemoryTree(const MemoryTree&) = delete;
  MemoryTree& operator=(const MemoryTree&) = delete;
  ~MemoryTree();

  void AddFile(const Operation& operation, std::span<const std::byte> bytes);
  void AddFolder(const Operation& operation);
  void AddLink(const Operation& operation, std::u16string_view target);

  [[nodiscard]] bool ComparesNamesExactly() const noexcept { return comparison_ == NameComparison::Exact; }
  [[nodiscard]] FolderListing List(const Operation& operation) const;
  [[nodiscard]] FileStatus Stat(const Operation& operation) const;
  [[nodiscard]] AbsoluteIRI CanonicalLocation(const Operation& operation) const;
  FileIdentity RequireFolder(const Operation& operation) const;
  void Rename(const Operation& operation, const Operation& destination);
  void Remove(const Operation& operation);
  void CreateFolder(const Operation& operation);

  /// The file at the operation's location, for the calls below.
  [[nodiscard]] MemoryNodePtr OpenForReading(const Operation& operation) const;
  [[nodiscard]] MemoryNodePtr OpenForWriting(const Operation& operation, WriteMode mode);

  [[nodiscard]] std::size_t Read(MemoryNode& node, std::size_t position, std::span<std::byte> buffer) const;
  /// Writes at `position`, or at the end when there is none, and returns the position behind it.
  std::size_t Write(MemoryNode& node, std::optional<std::size_t> position, std::span<const std::byte> bytes);
  [[nodiscard]] std::shared_ptr<const std::vector<std::byte>> Map(MemoryNode& node) const;
  [[nodiscard]] bool TryLock(MemoryNode& node, std::chrono::milliseconds timeout);
  void Unlock(MemoryNode& node);

 private:
  enum class LastLink { Followed, Kept };

  /// Where a path leads.
  struct Place {
    MemoryNodePtr folder;               ///< null for the root, and when something is missing on the way
    MemoryNodePtr node;                 ///< null when nothing is there
    std::vector<std::u16string> names;  ///< from the root, links followed, as spelled when made
    std::errc error{};                  ///< why there is no node

    [[nodiscard]] bool IsVacant() const noexcept { return node == nullptr && folder != nullptr; }
  };

  class Walk;

  [[nodiscard]] std::u16string KeyOf(const std::u16string& name) const;
  /// Where a path leads, or why nowhere.
  [[nodiscard]] Place Look(std::vector<std::u16string> names, LastLink lastLink) const;
  [[nodiscard]] Place Look(const Operation& operation, LastLink lastLink) const;
  /// The same, but fails when nothing is there.
  [[nodiscard]] Place Find(const Operation& operation, LastLink lastLink) const;
  [[nodiscard]] MemoryNodePtr FindFile(const Operation& operation) const;
  [[nodiscard]] FileKind KindOf(const Place& folder, const MemoryFolder::Child& child) const;

  [[nodiscard]] FileTime Now() const;
  /// A new node at `place`, instead of what is there.
  MemoryNodePtr Put(const Place& place, decltype(MemoryNode::content) content);
  /// Takes the name at `place` out of its folder.
  void Take(const Place& place);
  void MakeFolders(const Operation& operation, const std::vector<std::u16string>& names);
  /// Makes the folders on the way and puts `content` there, but never over a folder.
  void Replace(const Operation& operation, decltype(MemoryNode::content) content);
  void RequireReplaceable(const Operation& operation, const Place& from, const Place& to) const;

  const NameComparison comparison_;
  const std::uint64_t device_;
  mutable std::mutex mutex_;
  std::condition_variable unlocked_;
  std::uint64_t lastInode_ = 0;
  mutable FileTime lastTime_;
  MemoryNodePtr root_;
};

}  // namespace foundation::storage::vfs::detail
