#pragma once

// What tests say about storage's exceptions: not only that there is one, but what it tells.

#include <gmock/gmock.h>

#include <foundation/storage/vfs/exception.hpp>
#include <string>
#include <system_error>

namespace foundation::storage::vfs {

/// A callable that throws an Exception with the error `expected`.
inline auto FailsWith(std::errc expected) {
  return testing::Throws<Exception>(
      testing::Property("GetError", &Exception::GetError,
                        testing::Truly([expected](std::error_code error) { return error == expected; })));
}

/// A callable that throws an Exception about `text` whose message is `message`.
inline auto FailsAbout(const std::u16string& text, const std::string& message) {
  return testing::Throws<Exception>(
      testing::AllOf(testing::Property("GetOffendingText", &Exception::GetOffendingText, text),
                     testing::Property("what", &Exception::what, testing::StrEq(message))));
}

}  // namespace foundation::storage::vfs
