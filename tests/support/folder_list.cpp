#include <fl/filesystem/displayed_text.hpp>
#include <fl/filesystem/text_codec.hpp>
#include <sstream>
#include <support/folder_list.hpp>
#include <variant>

namespace Quorvex::PathManagement::support {

namespace {

using fl::filesystem::from_bytes;
using fl::filesystem::to_bytes;
using foundation::core::except::Notification;
using foundation::core::except::NotificationArgument;
using foundation::core::except::NotificationMessage;

constexpr std::string_view kRoot = "memory:///";

std::string TextOf(const NotificationArgument& argument) {
  const auto* const text = std::get_if<std::u16string>(&argument);
  return text == nullptr ? "#" : fl::filesystem::to_displayed_text(*text);
}

std::string TextOf(const NotificationMessage& message) {
  std::string arguments;
  for (const NotificationArgument& argument : message.GetArguments()) {
    arguments += (arguments.empty() ? "" : ", ") + TextOf(argument);
  }
  return message.GetIdentifier() + " " + message.GetKey() + "(" + arguments + ")";
}

}  // namespace

FolderList FoldersAt(std::string_view names) {
  FolderList folders;
  std::istringstream words{std::string(names)};
  for (std::string name; words >> name;) {
    const bool isIdentifier = name.find("://") != std::string::npos;
    folders.emplace_back(from_bytes(isIdentifier ? name : std::string(kRoot) + name));
  }
  return folders;
}

std::string NamesOf(const FolderList& folders) {
  std::string names;
  for (const auto& folder : folders) {
    const std::string text = to_bytes(folder.toString());
    names += (names.empty() ? "" : " ") + (text.starts_with(kRoot) ? text.substr(kRoot.size()) : text);
  }
  return names;
}

std::vector<std::string> MessagesOf(const Notification& notification) {
  std::vector<std::string> messages;
  for (const NotificationMessage& message : notification.GetMessages()) messages.push_back(TextOf(message));
  return messages;
}

}  // namespace Quorvex::PathManagement::support
