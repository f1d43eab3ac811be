// The contracts are called by slot, so the order of their virtual operations must never change. In the Itanium C++ ABI
// a pointer to a virtual member begins with 1 plus the byte offset of the member's slot (on ARM without the 1), and a
// virtual destructor takes two slots.

#include <gtest/gtest.h>

#include <cstring>
#include <search_path_interfaces/main_search_path_manager.hpp>
#include <search_path_interfaces/path.hpp>
#include <search_path_interfaces/path_entry.hpp>
#include <type_traits>

namespace Quorvex::PathManagement {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using foundation::storage::vfs::CanonicalAbsoluteIRI;

constexpr std::size_t kDestructorSlots = 2;

// The place of a virtual operation among the operations that follow the destructor, counted from 1.
template <class Member>
std::size_t PlaceOf(Member member) {
  static_assert(std::is_member_function_pointer_v<Member> && sizeof(Member) == 2 * sizeof(std::size_t));
  std::size_t words[2];
  std::memcpy(words, &member, sizeof(member));
  return words[0] / sizeof(void*) - kDestructorSlots + 1;
}

using LookupByLocation = std::shared_ptr<const IPathEntry> (IPath::*)(const AbsoluteIRI&, FilenameMatchingPolicy) const;
using LookupByCanonicalLocation = std::shared_ptr<const IPathEntry> (IPath::*)(const CanonicalAbsoluteIRI&) const;

TEST(IPath, HasItsFourteenOperationsInTheAgreedSlots) {
  EXPECT_EQ(PlaceOf(&IPath::GetMainEntries), 1U);
  EXPECT_EQ(PlaceOf(&IPath::GetMethodEntries), 2U);
  EXPECT_EQ(PlaceOf(&IPath::GetMethodEntriesByName), 3U);
  EXPECT_EQ(PlaceOf(&IPath::GetPartiallyMatchingEntries), 4U);
  EXPECT_EQ(PlaceOf(&IPath::GetMainEntryForEntry), 5U);
  EXPECT_EQ(PlaceOf(&IPath::GetParentEntryForEntry), 6U);
  EXPECT_EQ(PlaceOf(static_cast<LookupByLocation>(&IPath::GetPathEntryFromAbsoluteIRI)), 7U);
  EXPECT_EQ(PlaceOf(static_cast<LookupByCanonicalLocation>(&IPath::GetPathEntryFromAbsoluteIRI)), 8U);
  EXPECT_EQ(PlaceOf(&IPath::FindFirstInScope), 9U);
  EXPECT_EQ(PlaceOf(&IPath::FindAllInScope), 10U);
  EXPECT_EQ(PlaceOf(&IPath::ForEachEntry), 11U);
  EXPECT_EQ(PlaceOf(&IPath::ConcurrentForEachEntry), 12U);
  EXPECT_EQ(PlaceOf(&IPath::FirstEntryIsBeforeSecondOnPath), 13U);
  EXPECT_EQ(PlaceOf(&IPath::IsEntryOnPath), 14U);
}

TEST(IPathEntry, HasItsElevenOperationsInTheAgreedSlots) {
  EXPECT_EQ(PlaceOf(&IPathEntry::GetEntryType), 1U);
  EXPECT_EQ(PlaceOf(&IPathEntry::GetItems), 2U);
  EXPECT_EQ(PlaceOf(&IPathEntry::GetAbsoluteIRI), 3U);
  EXPECT_EQ(PlaceOf(&IPathEntry::GetPrivateEntry), 4U);
  EXPECT_EQ(PlaceOf(&IPathEntry::GetSecondSingleEntry), 5U);
  EXPECT_EQ(PlaceOf(&IPathEntry::GetFirstEntryGroup), 6U);
  EXPECT_EQ(PlaceOf(&IPathEntry::GetSecondEntryGroup), 7U);
  EXPECT_EQ(PlaceOf(&IPathEntry::GetThirdEntryGroup), 8U);
  EXPECT_EQ(PlaceOf(&IPathEntry::FindFirst), 9U);
  EXPECT_EQ(PlaceOf(&IPathEntry::ForEachEntryInScope), 10U);
  EXPECT_EQ(PlaceOf(&IPathEntry::GetFilenameComparator), 11U);
}

TEST(IMainSearchPathManager, HasTheOperationsOfEditingInTheAgreedOrder) {
  EXPECT_LT(PlaceOf(&IMainSearchPathManager::SetMainPathForAddition),
            PlaceOf(&IMainSearchPathManager::SetMainPathForRemoval));
  EXPECT_LT(PlaceOf(&IMainSearchPathManager::SetMainPathForRemoval),
            PlaceOf(&IMainSearchPathManager::GetMainPathFolders));
}

TEST(Contracts, AreAbstractWithVirtualDestructorsAndNothingButAVirtualTable) {
  EXPECT_TRUE(std::is_abstract_v<IPath>);
  EXPECT_TRUE(std::has_virtual_destructor_v<IPath>);
  EXPECT_EQ(sizeof(IPath), sizeof(void*));

  EXPECT_TRUE(std::is_abstract_v<IPathEntry>);
  EXPECT_TRUE(std::has_virtual_destructor_v<IPathEntry>);
  EXPECT_EQ(sizeof(IPathEntry), sizeof(void*));
}

}  // namespace
}  // namespace Quorvex::PathManagement
