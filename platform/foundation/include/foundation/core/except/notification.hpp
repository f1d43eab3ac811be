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

  /// A copy has arguments of its own.
  NotificationMessage(const NotificationMessage& other)
      : arguments_(Copied(other.arguments_)), identifier_(other.identifier_), key_(other.key_) {}
  NotificationMessage(NotificationMessage&& other) noexcept = default;
  /// The same; when it throws, this message is as it was.
  NotificationMessage& operator=(const NotificationMessage& other) { return *this = NotificationMessage(other); }
  NotificationMessage& operator=(NotificationMessage&& other) noexcept = default;
  ~NotificationMessage() = default;

  /// One about a single text. Copies no argument, as a braced list of them would.
  [[nodiscard]] static NotificationMessage About(std::u16string argument, std::string identifier, std::string key) {
    std::vector<NotificationArgument> arguments;
    arguments.emplace_back(std::move(argument));
    return {std::move(arguments), std::move(identifier), std::move(key)};
  }

  /// What fills the places in the text, in their order.
  [[nodiscard]] const std::vector<NotificationArgument>& GetArguments() const noexcept { return arguments_; }
  /// The part of the catalog.
  [[nodiscard]] const std::string& GetIdentifier() const noexcept { return identifier_; }
  /// The text within that part.
  [[nodiscard]] const std::string& GetKey() const noexcept { return key_; }

  friend bool operator==(const NotificationMessage&, const NotificationMessage&) = default;

 private:
  // In libstdc++ 12, to run out of memory while a variant with a text is copied is undefined behaviour; to move one
  // never fails.
  static std::vector<NotificationArgument> Copied(const std::vector<NotificationArgument>& arguments) {
    std::vector<NotificationArgument> copies;
    copies.reserve(arguments.size());
    for (const NotificationArgument& argument : arguments) {
      std::visit([&copies](auto value) { copies.emplace_back(std::move(value)); }, argument);
    }
    return copies;
  }

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
