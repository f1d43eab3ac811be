#include "native_file.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <foundation/storage/vfs/iri_conversion.hpp>
#include <thread>

namespace foundation::storage::vfs::detail {

namespace {

class NativeReadableFile final : public IReadableFile {
 public:
  NativeReadableFile(const AbsoluteIRI& location, Descriptor file) : location_(location), file_(std::move(file)) {}

  std::size_t Read(std::span<std::byte> buffer) override {
    const auto count = Uninterrupted([&] { return ::read(file_.Get(), buffer.data(), buffer.size()); });
    if (count == -1) Operation("read", location_).Fail(SystemError());
    return static_cast<std::size_t>(count);
  }

 private:
  AbsoluteIRI location_;
  Descriptor file_;
};

class NativeWritableFile final : public IWritableFile {
 public:
  NativeWritableFile(const AbsoluteIRI& location, Descriptor file) : location_(location), file_(std::move(file)) {}

  void Write(std::span<const std::byte> bytes) override {
    const Operation operation("write", location_);
    RequireOpen(operation);
    while (!bytes.empty()) {
      const auto count = Uninterrupted([&] { return ::write(file_.Get(), bytes.data(), bytes.size()); });
      if (count == -1) operation.Fail(SystemError());
      bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
  }

  void Flush() override {
    const Operation operation("flush", location_);
    RequireOpen(operation);
    if (Uninterrupted([&] { return ::fsync(file_.Get()); }) == -1) operation.Fail(SystemError());
  }

  void Close() override {
    if (file_.IsOpen() && !file_.Close()) Operation("close", location_).Fail(SystemError());
  }

 private:
  void RequireOpen(const Operation& operation) const {
    if (!file_.IsOpen()) operation.Fail(std::errc::bad_file_descriptor);
  }

  AbsoluteIRI location_;
  Descriptor file_;
};

class NativeMapping final : public MappedBytes {
 public:
  explicit NativeMapping(std::span<std::byte> bytes) noexcept : MappedBytes(bytes), bytes_(bytes) {}
  NativeMapping(const NativeMapping&) = delete;
  NativeMapping& operator=(const NativeMapping&) = delete;
  ~NativeMapping() override {
    if (!bytes_.empty()) ::munmap(bytes_.data(), bytes_.size());
  }

 private:
  std::span<std::byte> bytes_;
};

/// Holds the lock by holding the open file. Gives it up by name, for a process forked meanwhile holds the file as well.
class NativeFileLock final : public IFileLock {
 public:
  explicit NativeFileLock(Descriptor file) : file_(std::move(file)) {}
  NativeFileLock(const NativeFileLock&) = delete;
  NativeFileLock& operator=(const NativeFileLock&) = delete;
  ~NativeFileLock() override { ::flock(file_.Get(), LOCK_UN); }

 private:
  Descriptor file_;
};

int OpenFlagsOf(WriteMode mode) noexcept {
  switch (mode) {
    case WriteMode::CreateNew:
      return O_WRONLY | O_CREAT | O_EXCL;
    case WriteMode::Append:
      return O_WRONLY | O_CREAT | O_APPEND;
    case WriteMode::Truncate:
      break;
  }
  return O_WRONLY | O_CREAT;
}

void RequireFile(const Operation& operation, const Descriptor& opened) {
  const struct stat status = StatusOf(operation, opened);
  if (S_ISDIR(status.st_mode)) operation.Fail(std::errc::is_a_directory);
  if (!S_ISREG(status.st_mode)) operation.Fail(std::errc::not_supported);
}

// Opens the file at the operation's location. Never waits for a device or a FIFO, and fails for whatever is not a file.
Descriptor OpenFile(const Operation& operation, int flags) {
  constexpr int always = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  constexpr mode_t permissions = 0666;
  const std::string name = NativeNameOf(operation.GetLocation());
  Descriptor file(Uninterrupted([&] { return ::open(name.c_str(), flags | always, permissions); }));
  if (!file.IsOpen()) operation.Fail(SystemError());
  RequireFile(operation, file);
  return file;
}

// Whether the open file still bears its name: somebody may have removed it, and then another stands there, or none.
bool IsStillThere(const Operation& operation, const Descriptor& file) {
  struct stat named = {};
  if (::stat(NativeNameOf(operation.GetLocation()).c_str(), &named) != 0) return false;
  return IdentityOf(named) == IdentityOf(StatusOf(operation, file));
}

}  // namespace

std::error_code SystemError() noexcept { return {errno, std::system_category()}; }

Descriptor::~Descriptor() {
  if (IsOpen()) ::close(descriptor_);
}

bool Descriptor::Close() noexcept {
  // Linux has let the descriptor go even when a signal interrupts; asking again could close another file.
  return ::close(Release()) == 0 || errno == EINTR;
}

FileKind KindOf(const struct stat& status) noexcept {
  if (S_ISREG(status.st_mode)) return FileKind::File;
  return S_ISDIR(status.st_mode) ? FileKind::Folder : FileKind::Other;
}

FileIdentity IdentityOf(const struct stat& status) noexcept { return {status.st_dev, status.st_ino}; }

FileTime FileTimeOf(const struct timespec& time) noexcept {
  return FileTime(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}

FileTime ModificationTimeOf(const struct stat& status) noexcept { return FileTimeOf(status.st_mtim); }
FileTime ChangeTimeOf(const struct stat& status) noexcept { return FileTimeOf(status.st_ctim); }

struct stat StatusOf(const Operation& operation, const Descriptor& descriptor) {
  struct stat status {};
  if (::fstat(descriptor.Get(), &status) == -1) operation.Fail(SystemError());
  return status;
}

std::string NativeNameOf(const AbsoluteIRI& location) {
  return toNativePath(location, fl::filesystem::detail::native_style).string();
}

std::unique_ptr<IReadableFile> OpenNativeForReading(const AbsoluteIRI& location) {
  return std::make_unique<NativeReadableFile>(location, OpenFile(Operation("open", location), O_RDONLY));
}

std::unique_ptr<IWritableFile> OpenNativeForWriting(const AbsoluteIRI& location, WriteMode mode) {
  const Operation operation("open", location);
  Descriptor file = OpenFile(operation, OpenFlagsOf(mode));
  // Emptied only now that it is known to be a file.
  const bool isEmptied = mode == WriteMode::Truncate;
  if (isEmptied && Uninterrupted([&] { return ::ftruncate(file.Get(), 0); }) == -1) operation.Fail(SystemError());
  return std::make_unique<NativeWritableFile>(location, std::move(file));
}

std::shared_ptr<const MappedBytes> MapNative(const AbsoluteIRI& location) {
  const Operation operation("map", location);
  const Descriptor file = OpenFile(operation, O_RDONLY);
  const auto size = static_cast<std::size_t>(StatusOf(operation, file).st_size);
  if (size == 0) return std::make_shared<const NativeMapping>(std::span<std::byte>());

  void* address = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.Get(), 0);
  if (address == MAP_FAILED) operation.Fail(SystemError());
  return std::make_shared<const NativeMapping>(std::span(static_cast<std::byte*>(address), size));
}

std::unique_ptr<IFileLock> LockNative(const AbsoluteIRI& location, std::chrono::milliseconds timeout) {
  constexpr std::chrono::milliseconds pause(5);
  const Operation operation("lock", location);
  const auto start = std::chrono::steady_clock::now();
  for (;;) {
    Descriptor file = OpenFile(operation, O_RDWR | O_CREAT);
    const bool isLocked = Uninterrupted([&] { return ::flock(file.Get(), LOCK_EX | LOCK_NB); }) != -1;
    if (!isLocked && errno != EWOULDBLOCK) operation.Fail(SystemError());
    if (isLocked && IsStillThere(operation, file)) return std::make_unique<NativeFileLock>(std::move(file));

    const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    if (waited >= timeout) operation.Fail(std::errc::timed_out);
    std::this_thread::sleep_for(std::min(pause, timeout - waited));
  }
}

}  // namespace foundation::storage::vfs::detail
