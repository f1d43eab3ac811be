#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vornixpath {

/// What there is to know that concerns more than one command; nothing when `topic` is none. Lines of at most 80
/// columns.
[[nodiscard]] std::optional<std::string_view> HelpAbout(std::string_view topic);

/// The names of all topics, sorted.
[[nodiscard]] std::vector<std::string_view> HelpTopicNames();

/// The same with ", " between them.
[[nodiscard]] std::string HelpTopics();

}  // namespace vornixpath
