#include <current_working_folder/current_working_folder.hpp>

namespace Quorvex::current_working_folder {

FailedToAbsolutizeException::FailedToAbsolutizeException(int code)
    : code_(code),
      text_(std::make_shared<const std::string>("a folder name cannot be made absolute (code " + std::to_string(code) +
                                                ")")) {}

FailedToAbsolutizeException::FailedToAbsolutizeException(const FailedToAbsolutizeException&) noexcept = default;
FailedToAbsolutizeException& FailedToAbsolutizeException::operator=(const FailedToAbsolutizeException&) noexcept =
    default;
FailedToAbsolutizeException::~FailedToAbsolutizeException() = default;

const char* FailedToAbsolutizeException::what() const noexcept { return text_->c_str(); }

ICurrentWorkingFolder::~ICurrentWorkingFolder() = default;

}  // namespace Quorvex::current_working_folder
