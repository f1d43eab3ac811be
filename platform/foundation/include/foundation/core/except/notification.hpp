// What a user should hear about, kept apart from the texts in which it is said.
//
// Plain values: copies are deep and belong to whoever made them. Not safe for writing from several threads at once.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace foundation::core::except {

/// A value that a message's text mentions.
using NotificationArgument = std::variant<std::int64_t, double, std::u16string>;

/// One message: which text of a message catalog to show, and what to put into it.
class NotificationMessage {
 public:
  /// `identifier` names a part of the catalog, as in "VORNIX:mpath", and `key` a text in it.
  NotificationMessage(std::vector<NotificationArgument> arguments, std::string identifier, std::string key) noexcept
      : arguments_(std::move(arguments)), identifier_(std::move(identifier)), key_(std::move(key)) {}

  /// What fills the places in the text, in their order.
  [[nodiscard]] const std::vector<NotificationArgument>& GetArguments() const noexcept { return arguments_; }
  /// The part of the catalog.
  [[nodiscard]] const std::string& GetIdentifier() const noexcept { return identifier_; }
  /// The text within that part.
  [[nodiscard]] const std::string& GetKey() const noexcept { return key_; }

  friend bool operator==(const NotificationMessage&, const NotificationMessage&) = default;

 private:
  std::vector<NotificationArgument> arguments_;
  std::string identifier_;
  std::string key_;
};

/// Messages in the order in which they were added; they are only ever appended.
class Notification {
 public:
  /// Leaves the notification as it was when it throws, which is only for want of memory.
  void Add(NotificationMessage message) { messages_.push_back(std::move(message)); }

  /// Valid until the next Add.
  [[nodiscard]] const std::vector<NotificationMessage>& GetMessages() const noexcept { return messages_; }
  /// Whether there is nothing that the user should hear about.
  [[nodiscard]] bool IsEmpty() const noexcept { return messages_.empty(); }

  friend bool operator==(const Notification&, const Notification&) = default;

 private:
  std::vector<NotificationMessage> messages_;
};

}  // namespace foundation::core::except
