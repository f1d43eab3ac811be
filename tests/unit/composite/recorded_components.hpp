#pragma once

// Two components that tell a log what they are asked, and the paths that the composite tests make of them.

#include <gmock/gmock.h>

#include <iterator>
#include <memory>
#include <search_path_utilities/composite_paths.hpp>
#include <string>
#include <support/call_log.hpp>
#include <support/fake_path.hpp>
#include <support/texts_of.hpp>
#include <vector>

namespace Quorvex::PathManagement::composite_tests {

using support::Call;
using support::CallLog;
using support::EntryPtr;
using support::FakePath;

using PathPtr = std::shared_ptr<const IPath>;
using PathPtrs = std::vector<PathPtr>;

inline constexpr PathEntryType kEveryKind[] = {PathEntryType::Main,      PathEntryType::Package,
                                               PathEntryType::Class,     PathEntryType::Private,
                                               PathEntryType::Auxiliary, PathEntryType::Resources};
inline constexpr SearchScope kEverything(std::begin(kEveryKind), std::end(kEveryKind));
inline constexpr auto kPolicy = FilenameMatchingPolicy::CaseInsensitive;

/// first: /a with the class Cls, and /b. second: /c with the class Cls. Each folder holds a foo.vnx.
struct RecordedComponents {
  std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
  std::shared_ptr<const FakePath> first =
      support::APath()
          .Recording("first", log)
          .With(support::Folder("/a").WithFile("foo.vnx").WithClass(support::Folder("Cls").WithFile("foo.vnx")))
          .With(support::Folder("/b").WithFile("foo.vnx"))
          .Build();
  std::shared_ptr<const FakePath> second =
      support::APath()
          .Recording("second", log)
          .With(support::Folder("/c").WithFile("foo.vnx").WithClass(support::Folder("Cls").WithFile("foo.vnx")))
          .Build();

  [[nodiscard]] EntryPtr At(std::string_view location) const {
    return location.starts_with("/c") ? second->EntryAt(location) : first->EntryAt(location);
  }
};

/// Both walks promise the same; a test takes one after the other.
struct Walk {
  const char* operation;
  bool (IPath::*walk)(SearchScope, const PathEntryCallback&) const;
};
inline const std::vector<Walk> kBothWalks = {{"ForEachEntry", &IPath::ForEachEntry},
                                             {"ConcurrentForEachEntry", &IPath::ConcurrentForEachEntry}};

/// Passes for a call that got the very array of kEverything, and kPolicy.
MATCHER(GotTheSameScopeAndPolicy, "") {
  return arg.scope && arg.scope->begin() == std::begin(kEveryKind) && arg.scope->end() == std::end(kEveryKind) &&
         arg.policy == kPolicy;
}

}  // namespace Quorvex::PathManagement::composite_tests
