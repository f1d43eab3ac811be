#pragma once

// The questions that oracles and laws ask, one after another.

#include <search_path_utilities/lookup.hpp>
#include <string>
#include <vector>

#include "recorded_components.hpp"

namespace Quorvex::PathManagement::composite_tests {

/// How something is asked for.
struct Question {
  SearchScope scope;
  FilenameMatchingPolicy policy;
};

inline std::vector<Question> Questions() {
  return {{kEverything, FilenameMatchingPolicy::CaseInsensitive},
          {MainScope, FilenameMatchingPolicy::CaseSensitive},
          {VisibleScope, FilenameMatchingPolicy::Native}};
}

inline const std::u16string kClassName = u"Cls";
inline const std::u16string kPartialPathname = u"p";
inline const std::u16string kWantedName = u"foo";
inline const std::vector<std::u16string> kWantedExtensions = {u".vnx", u".x"};

inline detail::SearchTarget WantedTarget() { return {kWantedName, kWantedExtensions}; }

/// What a whole walk visits.
inline std::vector<EntryPtr> Visited(const IPath& path, SearchScope scope) {
  std::vector<EntryPtr> visited;
  path.ForEachEntry(scope, [&](const EntryPtr& entry) {
    visited.push_back(entry);
    return false;
  });
  return visited;
}

inline std::vector<EntryPtr> VisitedConcurrently(const IPath& path, SearchScope scope) {
  std::vector<EntryPtr> visited;
  path.ConcurrentForEachEntry(scope, [&](const EntryPtr& entry) {
    visited.push_back(entry);
    return false;
  });
  return visited;
}

}  // namespace Quorvex::PathManagement::composite_tests
