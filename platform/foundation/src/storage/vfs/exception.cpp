#include <fl/filesystem/displayed_text.hpp>
#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/exception.hpp>

namespace foundation::storage::vfs {

namespace {

std::string Compose(std::string_view subject, std::u16string_view text, std::string_view reason) {
  std::string message(subject);
  message.append(" \"").append(fl::filesystem::to_displayed_text(text)).append("\": ").append(reason);
  return message;
}

std::string Cannot(std::string_view operation) { return "cannot " + std::string(operation); }

}  // namespace

struct Exception::Content {
  std::u16string text;
  std::error_code error;
  std::string operation;
  std::string message;
};

Exception::Exception(std::u16string_view text, std::string_view reason)
    : content_(std::make_shared<const Content>(Content{std::u16string(text),
                                                       std::make_error_code(std::errc::invalid_argument),
                                                       {},
                                                       Compose("malformed identifier", text, reason)})) {}

Exception::Exception(std::string_view operation, const AbsoluteIRI& location, std::error_code error)
    : Exception(operation, location, error, error.message()) {}

Exception::Exception(std::string_view operation, const AbsoluteIRI& location, std::error_code error,
                     std::string_view reason)
    : content_(std::make_shared<const Content>(Content{location.toString(), error, std::string(operation),
                                                       Compose(Cannot(operation), location.toString(), reason)})) {}

Exception::Exception(const Exception&) noexcept = default;
Exception& Exception::operator=(const Exception&) noexcept = default;
Exception::~Exception() = default;

const std::u16string& Exception::GetOffendingText() const noexcept { return content_->text; }
std::error_code Exception::GetError() const noexcept { return content_->error; }
const std::string& Exception::GetOperation() const noexcept { return content_->operation; }
const char* Exception::what() const noexcept { return content_->message.c_str(); }

}  // namespace foundation::storage::vfs
