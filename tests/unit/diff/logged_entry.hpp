#pragma once

// Entries that tell a log of each question for their method entries.

#include <string>
#include <string_view>
#include <support/call_log.hpp>

#include "made_entry.hpp"

namespace Quorvex::PathManagement::diff_tests {

/// A new object for the folder /`folder`, which the log knows as `name`: "old GetPrivateEntry".
inline std::shared_ptr<MadeEntry> ALoggedEntry(std::string_view folder, std::string_view name,
                                               const std::shared_ptr<support::CallLog>& log) {
  const auto entry = AnEntry(folder);
  entry->whenAskedForMethodEntries = [log, name = std::string(name)](std::string_view operation) {
    log->Note({name + ' ' + std::string(operation)});
  };
  return entry;
}

}  // namespace Quorvex::PathManagement::diff_tests
