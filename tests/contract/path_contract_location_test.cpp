// From a location to its entry.

#include <utility>

#include "path_contract.hpp"

namespace Quorvex::PathManagement::contract {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;

EntryPtr EntryAtCanonical(const IPath& path, const AbsoluteIRI& location) {
  return path.GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(location, u""));
}

TEST_P(PathContract, KnowsEachEntryByItsLocation) {
  for (const EntryPtr& entry : Entries()) {
    const AbsoluteIRI location = entry->GetAbsoluteIRI();

    for (const FilenameMatchingPolicy policy : kEachPolicy) {
      EXPECT_EQ(Path().GetPathEntryFromAbsoluteIRI(location, policy), entry) << Shown(entry);
    }
    EXPECT_EQ(EntryAtCanonical(Path(), location), entry) << Shown(entry);
  }
}

TEST_P(PathContract, KnowsNoEntryWhereNoneIs) {
  const AbsoluteIRI a = At("/a")->GetAbsoluteIRI();
  const std::vector<AbsoluteIRI> places = {a.getChild(u"plain"), a.getChild(u"foo.vnx"), a.getChild(u"@Cl"),
                                           a.getParent().getChild(u"nowhere"), AbsoluteIRI(u"elsewhere:///a")};

  for (const AbsoluteIRI& place : places) {
    for (const FilenameMatchingPolicy policy : kEachPolicy) {
      EXPECT_EQ(Path().GetPathEntryFromAbsoluteIRI(place, policy), nullptr) << testing::PrintToString(place.toString());
    }
    EXPECT_EQ(EntryAtCanonical(Path(), place), nullptr) << testing::PrintToString(place.toString());
  }
}

TEST_P(PathContract, KnowsALocationInAnotherLetterCaseOnlyWhenAskedTo) {
  const AbsoluteIRI where = At("/b")->GetAbsoluteIRI().getParent();

  for (const auto& [location, entry] :
       {std::pair(where.getChild(u"B"), At("/b")), std::pair(where.getChild(u"b").getChild(u"@CLS"), At("/b/@Cls"))}) {
    EXPECT_EQ(Path().GetPathEntryFromAbsoluteIRI(location, kCaseInsensitive), entry) << Shown(entry);
    EXPECT_EQ(Path().GetPathEntryFromAbsoluteIRI(location, kCaseSensitive), nullptr) << Shown(entry);
    EXPECT_EQ(EntryAtCanonical(Path(), location), nullptr) << Shown(entry);
  }
}

TEST_P(PathContract, KnowsNoLocationWithoutFolders) {
  const PathPtr path = Make({});
  const AbsoluteIRI location = At("/a")->GetAbsoluteIRI();

  EXPECT_EQ(path->GetPathEntryFromAbsoluteIRI(location, kCaseInsensitive), nullptr);
  EXPECT_EQ(EntryAtCanonical(*path, location), nullptr);
}

}  // namespace
}  // namespace Quorvex::PathManagement::contract
