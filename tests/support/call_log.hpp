#pragma once

// What fakes were asked, in order, with the very arguments; and which of those questions fail. Safe from any thread.

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <map>
#include <mutex>
#include <optional>
#include <search_path_interfaces/filename_matching_policy.hpp>
#include <search_path_interfaces/search_scope.hpp>
#include <search_path_interfaces/search_target.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Quorvex::PathManagement::support {

/// One question to a fake. What an operation does not take stays empty.
struct Call {
  std::string operation;  ///< "first.GetMainEntries": the fake's name, then the operation's
  std::optional<SearchScope> scope{};
  std::optional<FilenameMatchingPolicy> policy{};
  std::optional<std::u16string> text{};  ///< a name, a partial pathname, or a canonical location's shown text
  std::optional<foundation::storage::vfs::AbsoluteIRI> location{};
  const detail::SearchTarget* target = nullptr;
  std::vector<const void*> arguments{};  ///< addresses of the entries or of the callback given
};

/// What a fake throws where it was told to.
class InjectedFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class CallLog {
 public:
  /// Remembers `call`, then throws InjectedFailure with the operation's name if that was planned.
  void Note(Call call);

  /// Lets the next `times` calls of `operation` fail.
  void FailNext(std::string_view operation, int times = 1);

  [[nodiscard]] std::vector<Call> GetCalls() const;
  [[nodiscard]] std::vector<std::string> GetOperations() const;
  void Clear();

 private:
  mutable std::mutex mutex_;
  std::vector<Call> calls_;
  std::map<std::string, int, std::less<>> failuresLeft_;
};

}  // namespace Quorvex::PathManagement::support
