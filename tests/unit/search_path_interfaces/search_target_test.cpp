#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <search_path_interfaces/search_target.hpp>
#include <type_traits>
#include <utility>

namespace Quorvex::PathManagement::detail {
namespace {

using testing::ElementsAre;

using Text = std::u16string;
using Texts = std::vector<std::u16string>;

// What a caller keeps alive for a target that borrows.
struct Loan {
  Text name = u"foo";
  Texts extensions = {u".vnx", u".src"};
};

// Whether an object lies inside another: the parts of an owning target lie inside it.
bool LiesInside(const void* part, const SearchTarget& whole) {
  const auto* const begin = reinterpret_cast<const char*>(&whole);
  return part >= begin && part < begin + sizeof(whole);
}

void ExpectToOwn(const SearchTarget& target, const Text& baseName, const Text& extension) {
  EXPECT_TRUE(target.OwnsItsParts());
  EXPECT_TRUE(LiesInside(&target.GetBaseName(), target));
  EXPECT_TRUE(LiesInside(&target.GetExtensions(), target));
  EXPECT_EQ(target.GetBaseName(), baseName);
  EXPECT_THAT(target.GetExtensions(), ElementsAre(extension));
}

void ExpectToBorrow(const SearchTarget& target, const Loan& loan) {
  EXPECT_FALSE(target.OwnsItsParts());
  EXPECT_EQ(&target.GetBaseName(), &loan.name);
  EXPECT_EQ(&target.GetExtensions(), &loan.extensions);
}

TEST(SearchTarget, BorrowsTheCallersNameAndList) {
  const Loan loan;

  const SearchTarget target(loan.name, loan.extensions);

  ExpectToBorrow(target, loan);
}

TEST(SearchTarget, RefusesToBorrowWhatIsAboutToVanish) {
  EXPECT_TRUE((std::is_constructible_v<SearchTarget, Text&, Texts&>));
  EXPECT_TRUE((std::is_constructible_v<SearchTarget, const Text&, const Texts&>));
  EXPECT_FALSE((std::is_constructible_v<SearchTarget, Text, const Texts&>));
  EXPECT_FALSE((std::is_constructible_v<SearchTarget, const Text&, Texts>));
  EXPECT_FALSE((std::is_constructible_v<SearchTarget, Text, Texts>));
  EXPECT_FALSE((std::is_constructible_v<SearchTarget, const char16_t*, const Texts&>));
}

TEST(SearchTarget, OwnsOneBaseNameAndOneExtensionWhenAskedTo) {
  ExpectToOwn(SearchTarget::Owning(u"foo", u".src"), u"foo", u".src");
  ExpectToOwn(SearchTarget::Owning(u"", u""), u"", u"");
}

TEST(SearchTarget, CopiesOfAnOwningTargetPointAtTheirOwnParts) {
  auto original = std::make_unique<const SearchTarget>(SearchTarget::Owning(u"foo", u".src"));

  const SearchTarget copy(*original);
  original.reset();

  ExpectToOwn(copy, u"foo", u".src");
}

TEST(SearchTarget, MovedOwningTargetsPointAtTheirOwnParts) {
  SearchTarget original = SearchTarget::Owning(u"a name too long for the text itself to hold it", u".src");

  const SearchTarget moved(std::move(original));

  ExpectToOwn(moved, u"a name too long for the text itself to hold it", u".src");
}

TEST(SearchTarget, AMovedFromOwningTargetStillPointsAtItsOwnParts) {
  SearchTarget original = SearchTarget::Owning(u"foo", u".src");

  const SearchTarget moved(std::move(original));

  EXPECT_TRUE(LiesInside(&original.GetBaseName(), original));  // NOLINT(bugprone-use-after-move): that is the question
  EXPECT_TRUE(LiesInside(&original.GetExtensions(), original));
  ExpectToOwn(moved, u"foo", u".src");
}

TEST(SearchTarget, CopiesAndMovesOfABorrowingTargetBorrowFromTheSameCaller) {
  const Loan loan;
  SearchTarget original(loan.name, loan.extensions);

  const SearchTarget copy(original);
  const SearchTarget moved(std::move(original));

  ExpectToBorrow(copy, loan);
  ExpectToBorrow(moved, loan);
}

TEST(SearchTarget, AssignmentTurnsABorrowerIntoAnOwner) {
  const Loan loan;
  const SearchTarget owner = SearchTarget::Owning(u"bar", u".obj");
  SearchTarget copied(loan.name, loan.extensions);
  SearchTarget moved(loan.name, loan.extensions);

  copied = owner;
  moved = SearchTarget::Owning(u"bar", u".obj");

  ExpectToOwn(copied, u"bar", u".obj");
  ExpectToOwn(moved, u"bar", u".obj");
}

TEST(SearchTarget, AssignmentTurnsAnOwnerIntoABorrower) {
  const Loan loan;
  const SearchTarget borrower(loan.name, loan.extensions);
  SearchTarget copied = SearchTarget::Owning(u"bar", u".obj");
  SearchTarget moved = SearchTarget::Owning(u"bar", u".obj");

  copied = borrower;
  moved = SearchTarget(loan.name, loan.extensions);

  ExpectToBorrow(copied, loan);
  ExpectToBorrow(moved, loan);
}

TEST(SearchTarget, AssignmentBetweenOwnersLeavesTwoIndependentTargets) {
  auto original = std::make_unique<SearchTarget>(SearchTarget::Owning(u"foo", u".src"));
  SearchTarget assigned = SearchTarget::Owning(u"bar", u".obj");

  assigned = *original;
  original.reset();

  ExpectToOwn(assigned, u"foo", u".src");
}

TEST(SearchTarget, AssignmentBetweenBorrowersTakesTheOthersLoan) {
  const Loan first;
  const Loan second;
  SearchTarget target(first.name, first.extensions);

  target = SearchTarget(second.name, second.extensions);

  ExpectToBorrow(target, second);
}

TEST(SearchTarget, SurvivesAssignmentToItself) {
  const Loan loan;
  SearchTarget owner = SearchTarget::Owning(u"foo", u".src");
  SearchTarget borrower(loan.name, loan.extensions);
  SearchTarget& sameOwner = owner;
  SearchTarget& sameBorrower = borrower;

  owner = sameOwner;
  owner = std::move(sameOwner);
  borrower = sameBorrower;
  borrower = std::move(sameBorrower);

  ExpectToOwn(owner, u"foo", u".src");
  ExpectToBorrow(borrower, loan);
}

TEST(SearchTarget, MovesWithoutThrowing) {
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<SearchTarget>);
  EXPECT_TRUE(std::is_nothrow_move_assignable_v<SearchTarget>);
}

TEST(SearchTarget, StaysValidWhenAVectorOfTargetsGrows) {
  std::vector<SearchTarget> targets;
  for (int count = 0; count < 10; ++count) targets.push_back(SearchTarget::Owning(u"foo", u".src"));

  for (const SearchTarget& target : targets) ExpectToOwn(target, u"foo", u".src");
}

}  // namespace
}  // namespace Quorvex::PathManagement::detail
