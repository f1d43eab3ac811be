#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <search_path_environment/message_catalog.hpp>
#include <string_view>
#include <variant>

#include "quoted_name.hpp"

namespace Quorvex::PathEnvironment {

namespace {

using foundation::core::except::NotificationArgument;
using foundation::core::except::NotificationMessage;

struct CatalogText {
  std::string_view identifier;
  std::string_view key;
  std::string_view predicate;  // of a sentence whose subject is the folder
};

constexpr std::array<CatalogText, 5> kCatalog = {{
    {"VORNIX:mpath", "invalidLocation",
     "is not a valid folder name: check the spelling, and in an identifier write '%' as %25, '?' as %3F and '#' as "
     "%23"},
    {"VORNIX:mpath", "directoryPermissionDenied",
     "may not be read: ask for the permission to list it, or leave it out"},
    {"VORNIX:mpath", "nameNonexistentOrNotADirectory",
     "does not exist or is not a folder: check the spelling, or make the folder first"},
    {"VORNIX:mpath", "directoryNameTooLong", "is longer than a folder's name can be: use a shorter one"},
    {"VORNIX:rmpath", "DirNotFound",
     "is not on the search path, so nothing was removed: 'vornixpath path' lists what is"},
}};

const CatalogText* FindText(const NotificationMessage& message) {
  const auto* const found = std::find_if(kCatalog.begin(), kCatalog.end(), [&message](const CatalogText& text) {
    return text.identifier == message.GetIdentifier() && text.key == message.GetKey();
  });
  return found == kCatalog.end() ? nullptr : found;
}

const std::u16string* FindFolder(const NotificationMessage& message) {
  return message.GetArguments().empty() ? nullptr : std::get_if<std::u16string>(&message.GetArguments().front());
}

std::string QuotedWhole(std::u16string_view text) { return '"' + fl::filesystem::to_displayed_text(text) + '"'; }

struct ShownArgument {
  std::string operator()(std::int64_t number) const { return std::to_string(number); }
  std::string operator()(double number) const {
    std::array<char, 32> digits;  // the shortest text that is read back as the same number has 24 at most
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
  }
  std::string operator()(const std::u16string& text) const { return QuotedWhole(text); }
};

std::string WithAllItHolds(const NotificationMessage& message) {
  std::string text = "message " + QuotedWhole(fl::filesystem::from_bytes(message.GetKey())) + " of " +
                     QuotedWhole(fl::filesystem::from_bytes(message.GetIdentifier()));
  std::string_view separator = ": ";
  for (const NotificationArgument& argument : message.GetArguments()) {
    text.append(separator).append(std::visit(ShownArgument(), argument));
    separator = ", ";
  }
  return text;
}

}  // namespace

std::string TextOf(const NotificationMessage& message) {
  const CatalogText* const text = FindText(message);
  const std::u16string* const folder = FindFolder(message);
  if (text == nullptr || folder == nullptr) return WithAllItHolds(message);
  return QuotedName(*folder).append(" ").append(text->predicate);
}

}  // namespace Quorvex::PathEnvironment
