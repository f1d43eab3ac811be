#include "memory_file.hpp"

#include <utility>

namespace foundation::storage::vfs::detail {

namespace {

class MemoryReadableFile final : public IReadableFile {
 public:
  MemoryReadableFile(std::shared_ptr<MemoryTree> tree, MemoryNodePtr node)
      : tree_(std::move(tree)), node_(std::move(node)) {}

  std::size_t Read(std::span<std::byte> buffer) override {
    const std::size_t count = tree_->Read(*node_, position_, buffer);
    position_ += count;
    return count;
  }

 private:
  std::shared_ptr<MemoryTree> tree_;
  MemoryNodePtr node_;
  std::size_t position_ = 0;
};

class MemoryWritableFile final : public IWritableFile {
 public:
  MemoryWritableFile(std::shared_ptr<MemoryTree> tree, MemoryNodePtr node, const AbsoluteIRI& location, WriteMode mode)
      : tree_(std::move(tree)), node_(std::move(node)), location_(location), isAppending_(mode == WriteMode::Append) {}

  void Write(std::span<const std::byte> bytes) override {
    RequireOpen("write");
    position_ = tree_->Write(*node_, isAppending_ ? std::nullopt : std::optional(position_), bytes);
  }

  void Flush() override { RequireOpen("flush"); }

  void Close() override { node_.reset(); }

 private:
  void RequireOpen(std::string_view verb) const {
    if (!node_) Operation(verb, location_).Fail(std::errc::bad_file_descriptor);
  }

  std::shared_ptr<MemoryTree> tree_;
  MemoryNodePtr node_;  // null once closed
  AbsoluteIRI location_;
  bool isAppending_;
  std::size_t position_ = 0;
};

class MemoryMapping final : public MappedBytes {
 public:
  explicit MemoryMapping(std::shared_ptr<const std::vector<std::byte>> bytes)
      : MappedBytes(*bytes), bytes_(std::move(bytes)) {}

 private:
  std::shared_ptr<const std::vector<std::byte>> bytes_;
};

class MemoryFileLock final : public IFileLock {
 public:
  MemoryFileLock(std::shared_ptr<MemoryTree> tree, MemoryNodePtr node)
      : tree_(std::move(tree)), node_(std::move(node)) {}
  MemoryFileLock(const MemoryFileLock&) = delete;
  MemoryFileLock& operator=(const MemoryFileLock&) = delete;
  ~MemoryFileLock() override { tree_->Unlock(*node_); }

 private:
  std::shared_ptr<MemoryTree> tree_;
  MemoryNodePtr node_;
};

}  // namespace

std::unique_ptr<IReadableFile> OpenMemoryForReading(const std::shared_ptr<MemoryTree>& tree,
                                                    const AbsoluteIRI& location) {
  return std::make_unique<MemoryReadableFile>(tree, tree->OpenForReading(Operation("open", location)));
}

std::unique_ptr<IWritableFile> OpenMemoryForWriting(const std::shared_ptr<MemoryTree>& tree,
                                                    const AbsoluteIRI& location, WriteMode mode) {
  MemoryNodePtr node = tree->OpenForWriting(Operation("open", location), mode);
  return std::make_unique<MemoryWritableFile>(tree, std::move(node), location, mode);
}

std::shared_ptr<const MappedBytes> MapMemory(const std::shared_ptr<MemoryTree>& tree, const AbsoluteIRI& location) {
  const MemoryNodePtr node = tree->OpenForReading(Operation("map", location));
  return std::make_shared<const MemoryMapping>(tree->Map(*node));
}

std::unique_ptr<IFileLock> LockMemory(const std::shared_ptr<MemoryTree>& tree, const AbsoluteIRI& location,
                                      std::chrono::milliseconds timeout) {
  const Operation operation("lock", location);
  const MemoryNodePtr node = tree->OpenForWriting(operation, WriteMode::Append);
  if (!tree->TryLock(*node, timeout)) operation.Fail(std::errc::timed_out);
  return std::make_unique<MemoryFileLock>(tree, node);
}

}  // namespace foundation::storage::vfs::detail
