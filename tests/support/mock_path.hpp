#pragma once

#include <gmock/gmock.h>

#include <ostream>
#include <search_path_interfaces/path.hpp>
#include <vector>

namespace Quorvex::PathManagement {

// Found where the item's type lives; Boost's optional refuses to be printed by default.
inline void PrintTo(const boost::optional<FoundItem>& found, std::ostream* out) {
  *out << (found ? "a found item" : "nothing found");
}

}  // namespace Quorvex::PathManagement

namespace Quorvex::PathManagement::support {

/// A path whose answers a test dictates, where a plain walk would not do: changing answers, spare capacity, failures.
class MockPath : public IPath {
 public:
  using Entries = std::vector<std::shared_ptr<const IPathEntry>>;
  using Entry = std::shared_ptr<const IPathEntry>;

  MOCK_METHOD(std::shared_ptr<const Entries>, GetMainEntries, (), (const, override));
  MOCK_METHOD(Entries, GetMethodEntries, (), (const, override));
  MOCK_METHOD(Entries, GetMethodEntriesByName, (SearchScope, const std::u16string&, FilenameMatchingPolicy),
              (const, override));
  MOCK_METHOD(Entries, GetPartiallyMatchingEntries, (SearchScope, const std::u16string&, FilenameMatchingPolicy),
              (const, override));
  MOCK_METHOD(Entry, GetMainEntryForEntry, (const IPathEntry&), (const, override));
  MOCK_METHOD(Entry, GetParentEntryForEntry, (const IPathEntry&), (const, override));
  MOCK_METHOD(Entry, GetPathEntryFromAbsoluteIRI,
              (const foundation::storage::vfs::AbsoluteIRI&, FilenameMatchingPolicy), (const, override));
  MOCK_METHOD(Entry, GetPathEntryFromAbsoluteIRI, (const foundation::storage::vfs::CanonicalAbsoluteIRI&),
              (const, override));
  MOCK_METHOD(boost::optional<FoundItem>, FindFirstInScope,
              (SearchScope, const detail::SearchTarget&, FilenameMatchingPolicy), (const, override));
  MOCK_METHOD(std::vector<FoundItem>, FindAllInScope,
              (SearchScope, const detail::SearchTarget&, FilenameMatchingPolicy), (const, override));
  MOCK_METHOD(bool, ForEachEntry, (SearchScope, const PathEntryCallback&), (const, override));
  MOCK_METHOD(bool, ConcurrentForEachEntry, (SearchScope, const PathEntryCallback&), (const, override));
  MOCK_METHOD(bool, FirstEntryIsBeforeSecondOnPath, (const IPathEntry&, const IPathEntry&), (const, override));
  MOCK_METHOD(bool, IsEntryOnPath, (const IPathEntry&), (const, override));
};

}  // namespace Quorvex::PathManagement::support
