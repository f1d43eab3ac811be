#pragma once

#include <foundation/core/except/exception.hpp>
#include <foundation/export.hpp>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

namespace foundation::storage::vfs {

class AbsoluteIRI;

/// The storage layer's one exception: a text that is no identifier, or an operation that storage refused. A value whose
/// copies share their content, so that copying never throws; safe to read from many threads.
class FOUNDATION_EXPORT Exception : public core::except::Exception<core::except::IInternalException> {
 public:
  /// `text` is malformed, for `reason`: `malformed identifier "ab%zz": ...`. The error is std::errc::invalid_argument.
  Exception(std::u16string_view text, std::string_view reason);
  /// `operation` failed at `location`: `cannot list "file:///x": Permission denied`.
  Exception(std::string_view operation, const AbsoluteIRI& location, std::error_code error);
  /// The same with `reason` in place of the error's own text.
  Exception(std::string_view operation, const AbsoluteIRI& location, std::error_code error, std::string_view reason);
  Exception(const Exception&) noexcept;
  Exception& operator=(const Exception&) noexcept;
  ~Exception() override;

  /// The malformed text, or the text of the location at which the operation failed.
  [[nodiscard]] const std::u16string& GetOffendingText() const noexcept;
  /// What the system answered.
  [[nodiscard]] std::error_code GetError() const noexcept;
  /// The verb of the failed operation, such as "list"; empty for a malformed text.
  [[nodiscard]] const std::string& GetOperation() const noexcept;
  /// UTF-8 in which nothing is dangerous to a terminal.
  [[nodiscard]] const char* what() const noexcept override;

 private:
  struct Content;
  std::shared_ptr<const Content> content_;
};

}  // namespace foundation::storage::vfs
