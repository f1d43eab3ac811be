// Files of the local system behind descriptors that nobody has to close by hand.
#pragma once

#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <foundation/storage/vfs/storage_provider.hpp>
#include <memory>
#include <utility>

#include "operation.hpp"

namespace foundation::storage::vfs::detail {

/// The error of the last system call.
[[nodiscard]] std::error_code SystemError() noexcept;

/// Makes a system call again for as long as a signal interrupts it.
template <class Call>
auto Uninterrupted(const Call& call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

/// Owns an open descriptor; -1 is none.
class Descriptor {
 public:
  explicit Descriptor(int descriptor) noexcept : descriptor_(descriptor) {}
  Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor();

  [[nodiscard]] bool IsOpen() const noexcept { return descriptor_ != -1; }
  [[nodiscard]] int Get() const noexcept { return descriptor_; }
  [[nodiscard]] int Release() noexcept { return std::exchange(descriptor_, -1); }
  /// False when the system reports a failure; the descriptor is gone all the same.
  [[nodiscard]] bool Close() noexcept;

 private:
  int descriptor_;
};

[[nodiscard]] FileKind KindOf(const struct stat& status) noexcept;
[[nodiscard]] FileIdentity IdentityOf(const struct stat& status) noexcept;
[[nodiscard]] FileTime FileTimeOf(const struct timespec& time) noexcept;
[[nodiscard]] FileTime ModificationTimeOf(const struct stat& status) noexcept;
[[nodiscard]] FileTime ChangeTimeOf(const struct stat& status) noexcept;

/// The status of what is open as `descriptor`.
[[nodiscard]] struct stat StatusOf(const Operation& operation, const Descriptor& descriptor);

[[nodiscard]] std::unique_ptr<IReadableFile> OpenNativeForReading(const AbsoluteIRI& location);
[[nodiscard]] std::unique_ptr<IWritableFile> OpenNativeForWriting(const AbsoluteIRI& location, WriteMode mode);
[[nodiscard]] std::shared_ptr<const MappedBytes> MapNative(const AbsoluteIRI& location);
[[nodiscard]] std::unique_ptr<IFileLock> LockNative(const AbsoluteIRI& location, std::chrono::milliseconds timeout);

/// The bytes that name `location` to the system. Throws Exception for what names nothing there.
[[nodiscard]] std::string NativeNameOf(const AbsoluteIRI& location);

}  // namespace foundation::storage::vfs::detail
