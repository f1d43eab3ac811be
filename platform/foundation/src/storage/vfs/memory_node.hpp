// What a tree in memory is made of. Whoever touches a node holds the tree's lock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace foundation::storage::vfs::detail {

struct MemoryNode;
using MemoryNodePtr = std::shared_ptr<MemoryNode>;

struct MemoryFile {
  std::shared_ptr<std::vector<std::byte>> bytes = std::make_shared<std::vector<std::byte>>();
  bool isMapped = false;  ///< someone may be reading `bytes`: the next write works on a copy
  bool isLocked = false;
};

struct MemoryFolder {
  struct Child {
    std::u16string name;
    MemoryNodePtr node;
  };
  std::map<std::u16string, Child> children;  ///< by the name as it is compared
};

struct MemoryLink {
  std::u16string target;
};

struct MemoryNode {
  std::variant<MemoryFile, MemoryFolder, MemoryLink> content;
  std::uint64_t inode = 0;
  FileTime modificationTime;

  [[nodiscard]] MemoryFile* AsFile() noexcept { return std::get_if<MemoryFile>(&content); }
  [[nodiscard]] MemoryFolder* AsFolder() noexcept { return std::get_if<MemoryFolder>(&content); }
  [[nodiscard]] MemoryLink* AsLink() noexcept { return std::get_if<MemoryLink>(&content); }

  [[nodiscard]] FileKind GetKind() const noexcept {
    if (std::holds_alternative<MemoryFile>(content)) return FileKind::File;
    return std::holds_alternative<MemoryFolder>(content) ? FileKind::Folder : FileKind::Other;
  }
};

}  // namespace foundation::storage::vfs::detail
