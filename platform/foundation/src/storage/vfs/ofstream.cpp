#include <array>
#include <exception>
#include <foundation/storage/vfs/exception.hpp>
#include <foundation/storage/vfs/ofstream.hpp>
#include <span>
#include <streambuf>
#include <utility>

namespace foundation::storage::vfs {

namespace {

WriteMode WriteModeOf(const File& file, std::ios_base::openmode mode) {
  constexpr auto out = std::ios_base::out;
  constexpr auto irrelevant = std::ios_base::binary | std::ios_base::ate;
  const auto relevant = mode & ~irrelevant;
  if (relevant == out || relevant == (out | std::ios_base::trunc)) return WriteMode::Truncate;
  if (relevant == std::ios_base::app || relevant == (out | std::ios_base::app)) return WriteMode::Append;
  throw Exception("open", file.getLocation(), std::make_error_code(std::errc::invalid_argument),
                  "the mode asks for something else than writing");
}

}  // namespace

/// Gathers what is written. After a failed write nothing more reaches the file.
class ofstream::Buffer final : public std::streambuf {
 public:
  [[nodiscard]] bool IsOpen() const noexcept { return file_ != nullptr; }

  void Open(std::unique_ptr<IWritableFile> file) {
    file_ = std::move(file);
    hasFailed_ = false;
    Empty();
  }

  /// The file is closed, whatever is thrown.
  void Close() {
    const auto file = std::move(file_);
    if (hasFailed_) return;  // what could not be written is dropped
    WritePendingTo(*file);
    setp(nullptr, nullptr);
    file->Close();
  }

  void CloseQuietly() noexcept {
    try {
      if (IsOpen()) Close();
    } catch (...) {  // NOLINT(bugprone-empty-catch): a destructor has nobody to tell
    }
  }

 protected:
  int_type overflow(int_type character) override {
    if (!WritePending()) return traits_type::eof();
    if (!traits_type::eq_int_type(character, traits_type::eof())) sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
  }

  int sync() override { return WritePending() ? 0 : -1; }

 private:
  bool WritePending() {
    if (!IsOpen() || hasFailed_) return false;
    WritePendingTo(*file_);
    return true;
  }

  void WritePendingTo(IWritableFile& file) {
    const std::span<const char> pending(pbase(), pptr());
    setp(nullptr, nullptr);
    hasFailed_ = true;  // until the write has come back
    if (!pending.empty()) file.Write(std::as_bytes(pending));
    hasFailed_ = false;
    Empty();
  }

  void Empty() { setp(bytes_.data(), bytes_.data() + bytes_.size()); }

  std::unique_ptr<IWritableFile> file_;
  bool hasFailed_ = false;
  std::array<char, 16384> bytes_;
};

ofstream::ofstream() : std::ostream(nullptr), buffer_(std::make_unique<Buffer>()) { rdbuf(buffer_.get()); }

ofstream::~ofstream() { buffer_->CloseQuietly(); }

void ofstream::open(const File& file, std::ios_base::openmode mode) {
  if (is_open()) {
    throw Exception("open", file.getLocation(), std::make_error_code(std::errc::device_or_resource_busy),
                    "the stream has another file open");
  }
  const WriteMode writeMode = WriteModeOf(file, mode);
  const AbsoluteIRI location = file.getLocation().getResolvedIRI();
  buffer_->Open(file.getStorageSystem().ProviderFor(location)->OpenForWriting(location, writeMode));
  clear();
}

bool ofstream::is_open() const noexcept { return buffer_->IsOpen(); }

void ofstream::close() {
  if (!is_open()) return;
  try {
    buffer_->Close();
  } catch (const Exception&) {
    const std::exception_ptr reason = std::current_exception();
    try {
      setstate(std::ios_base::badbit);
    } catch (const std::ios_base::failure&) {
      std::rethrow_exception(reason);  // the exception mask must not hide why
    }
    throw;
  }
}

}  // namespace foundation::storage::vfs
