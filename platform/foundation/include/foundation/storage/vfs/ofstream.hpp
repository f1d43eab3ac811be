// A std::ostream over a provider's file. Owns the open file; belongs to one thread at a time.
#pragma once

#include <foundation/export.hpp>
#include <foundation/storage/vfs/file.hpp>
#include <ios>
#include <memory>
#include <ostream>

namespace foundation::storage::vfs {

/// Write errors set badbit, as with any stream; when the exception mask holds badbit, storage's Exception itself comes
/// out.
class FOUNDATION_EXPORT ofstream : public std::ostream {
 public:
  /// Closed; whatever is written fails.
  ofstream();
  /// Closes, and keeps silent about what close would have reported.
  ~ofstream() override;
  ofstream(const ofstream&) = delete;
  ofstream& operator=(const ofstream&) = delete;

  /// Opens `file` to be written from its beginning, emptied first, or at its end when `mode` has std::ios_base::app,
  /// and clears the stream's state. Bytes are written as they are, with or without std::ios_base::binary.
  ///
  /// Throws Exception, and leaves the stream closed, when storage refuses; when a file is open already (and stays so);
  /// and when `mode` asks for anything else than writing.
  void open(const File& file, std::ios_base::openmode mode);
  /// Whether there is a file to write to, failed or not.
  [[nodiscard]] bool is_open() const noexcept;

  /// Writes what is left and closes the file. Does nothing when none is open.
  ///
  /// Throws Exception when that fails, and sets badbit; the file is closed all the same. After an earlier failed write
  /// it drops what could not be written and does not fail a second time.
  void close();

 private:
  class Buffer;
  std::unique_ptr<Buffer> buffer_;
};

}  // namespace foundation::storage::vfs
