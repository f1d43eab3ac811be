#pragma once

#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <foundation/export.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <system_error>
#include <vector>

namespace foundation::storage::vfs {

/// What stands behind a name, links followed. Other: a device, a FIFO, a socket, a link that leads nowhere.
enum class FileKind : std::uint8_t { File, Folder, Other };

/// Tells files and folders apart, whatever their names: equal as long as both exist exactly when they are the same
/// one.
struct FileIdentity {
  std::uint64_t device = 0;  ///< what holds it; means something within one provider only
  std::uint64_t inode = 0;   ///< its number there

  friend auto operator<=>(const FileIdentity&, const FileIdentity&) = default;
};

/// Since the epoch, as exact as the storage keeps it.
using FileTime = std::chrono::sys_time<std::chrono::nanoseconds>;

/// One name in a folder.
struct ListedEntry {
  std::u16string name;              ///< as it is stored, decoded, without separators
  FileKind kind = FileKind::Other;  ///< of what it leads to, if it is a link

  friend bool operator==(const ListedEntry&, const ListedEntry&) = default;
};

/// An entry whose kind could not be found out: a link that could not be followed, though not because its target is
/// missing or the links form a loop.
struct ListingProblem {
  std::u16string name;    ///< of the entry, which is not among those listed
  std::error_code error;  ///< why it could not be followed
};

/// All that a folder holds, and what tells whether it still does.
struct FolderListing {
  std::vector<ListedEntry> entries;      ///< in no order, without "." and ".."
  std::vector<ListingProblem> problems;  ///< entries of unknown kind; the others are complete all the same
  FileIdentity identity;                 ///< the folder's own
  FileTime modificationTime;             ///< the folder's own, read before its entries were
  FileTime changeTime;                   ///< likewise
  FileTime readAt;                       ///< no change that the listing missed bears an earlier time than this
  std::vector<std::u16string> links;  ///< those of the entries that are links, so that their kinds are other folders'
};

/// What storage knows of a file or folder, its links followed.
struct FileStatus {
  FileKind kind = FileKind::Other;  ///< never that of a link
  std::uint64_t size = 0;           ///< in bytes, of a file; of others whatever storage says
  FileTime modificationTime;        ///< of its bytes, or of the names in it
  FileTime changeTime;    ///< also of what else there is to know of it, its rights for one; nobody can set it back
  FileIdentity identity;  ///< which file or folder it is
};

/// An open file, read from its beginning.
class FOUNDATION_EXPORT IReadableFile {
 public:
  virtual ~IReadableFile();
  /// Reads the next bytes into `buffer` and returns how many; 0 only at the end of the file or for an empty buffer.
  virtual std::size_t Read(std::span<std::byte> buffer) = 0;
};

/// An open file, written in order. Destruction closes it and keeps silent about what Close would have reported.
class FOUNDATION_EXPORT IWritableFile {
 public:
  virtual ~IWritableFile();
  /// Writes all of `bytes`, or throws and has written some part of them.
  virtual void Write(std::span<const std::byte> bytes) = 0;
  /// Returns when all that was written is safe from a power failure. That the file exists under its name is
  /// FlushFolder's matter.
  virtual void Flush() = 0;
  /// Closes the file, even when it throws. A second call does nothing; Write and Flush fail from then on.
  virtual void Close() = 0;
};

/// The bytes of a file, readable as long as this object lives. At least 16-byte aligned.
class FOUNDATION_EXPORT MappedBytes {
 public:
  MappedBytes(const MappedBytes&) = delete;
  MappedBytes& operator=(const MappedBytes&) = delete;
  virtual ~MappedBytes();

  /// The first byte; null or not for an empty file. Valid as long as this object.
  [[nodiscard]] const std::byte* data() const noexcept { return bytes_.data(); }
  /// In bytes: what the file held when it was mapped.
  [[nodiscard]] std::size_t size() const noexcept { return bytes_.size(); }

 protected:
  /// `bytes` are kept readable by the derived class, until its destructor has run.
  explicit MappedBytes(std::span<const std::byte> bytes) noexcept : bytes_(bytes) {}

 private:
  std::span<const std::byte> bytes_;
};

/// An exclusive lock, held until it is destroyed.
class FOUNDATION_EXPORT IFileLock {
 public:
  virtual ~IFileLock();
};

/// What becomes of a file that is there already.
enum class WriteMode : std::uint8_t {
  CreateNew,  ///< fails when something of that name is there, even a link that leads nowhere
  Truncate,   ///< makes the file, or empties the one that is there
  Append      ///< makes the file, or goes on at its end; each write goes to the end as it then is
};

/// What a storage has to offer: one small interface that every scheme is served by.
///
/// Operations are const and may be called from several threads at once; a provider stands for storage that lives
/// elsewhere. An open file belongs to one thread at a time. Failures are Exceptions that carry the operation, the
/// location and the system's error; a rootless identifier always fails with std::errc::invalid_argument. A provider
/// looks at an identifier's authority and path, never at its scheme.
class FOUNDATION_EXPORT IStorageProvider {
 public:
  virtual ~IStorageProvider();

  /// What `folder` holds: all of it, or an Exception. What appears or vanishes meanwhile may or may not be listed.
  [[nodiscard]] virtual FolderListing List(const AbsoluteIRI& folder) const = 0;

  /// Which folder `folder` is, when it can be listed; fails as List would at once, without reading a name.
  virtual FileIdentity CheckFolder(const AbsoluteIRI& folder) const = 0;

  /// Follows links; fails when there is nothing, also at the end of a link.
  [[nodiscard]] virtual FileStatus Stat(const AbsoluteIRI& location) const = 0;

  /// `location` with every link followed. Of something missing: its deepest existing ancestor's canonical location,
  /// plus the rest. Fails for a loop of links, a refusal, and a file where a folder should be.
  [[nodiscard]] virtual AbsoluteIRI CanonicalLocation(const AbsoluteIRI& location) const = 0;

  /// False when letter case makes no difference to the names in `folder`. A folder that is missing answers as it would
  /// if made.
  [[nodiscard]] virtual bool ComparesNamesExactly(const AbsoluteIRI& folder) const = 0;

  /// Fails for whatever is not a file, and never waits for a device or a FIFO.
  [[nodiscard]] virtual std::unique_ptr<IReadableFile> OpenForReading(const AbsoluteIRI& file) const = 0;

  /// The bytes `file` holds now. A file that may be shortened in place must not be mapped but read: map what its
  /// writers replace by Rename.
  [[nodiscard]] virtual std::shared_ptr<const MappedBytes> Map(const AbsoluteIRI& file) const = 0;

  /// Opens a file to be written; its folder must exist. Links are followed, but for CreateNew.
  [[nodiscard]] virtual std::unique_ptr<IWritableFile> OpenForWriting(const AbsoluteIRI& file,
                                                                      WriteMode mode) const = 0;

  /// Returns when the names in `folder` are safe from a power failure.
  virtual void FlushFolder(const AbsoluteIRI& folder) const = 0;

  /// Moves `from` to `to` in one step; whoever looks at `to` sees the old or the new. Replaces a file, or an empty
  /// folder by a folder. A link is moved, not what it leads to.
  virtual void Rename(const AbsoluteIRI& from, const AbsoluteIRI& to) const = 0;

  /// Removes a file, an empty folder or a link itself. Removing what is not there is an error.
  virtual void Remove(const AbsoluteIRI& location) const = 0;

  /// Makes one folder; its parent must exist and it must not.
  virtual void CreateFolder(const AbsoluteIRI& folder) const = 0;

  /// Locks `file` against every other holder, in this process and others, and makes it if need be. Waits no longer
  /// than `timeout`, then fails with std::errc::timed_out; zero asks once.
  ///
  /// Name a side file that is neither renamed nor removed: a lock stays with the file, not with its name.
  [[nodiscard]] virtual std::unique_ptr<IFileLock> Lock(const AbsoluteIRI& file,
                                                        std::chrono::milliseconds timeout) const = 0;
};

}  // namespace foundation::storage::vfs

/// So that identities can be keys of hash tables.
template <>
struct std::hash<foundation::storage::vfs::FileIdentity> {
  /// Pure. O(1).
  [[nodiscard]] std::size_t operator()(const foundation::storage::vfs::FileIdentity& identity) const noexcept {
    // Inode numbers are small and dense, devices few: one odd multiplier keeps them apart.
    return static_cast<std::size_t>(identity.inode + identity.device * 0x9E3779B97F4A7C15ULL);
  }
};
