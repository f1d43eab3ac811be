#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <deque>
#include <exception>
#include <foundation/storage/vfs/exception.hpp>
#include <list>
#include <new>
#include <range/v3/view/filter.hpp>
#include <search_path_utilities/path_editing.hpp>
#include <stdexcept>
#include <string>
#include <support/fake_working_folder.hpp>
#include <support/folder_list.hpp>
#include <type_traits>
#include <variant>
#include <vector>

namespace Quorvex::PathManagement {
namespace {

using current_working_folder::FailedToAbsolutizeException;
using current_working_folder::ICurrentWorkingFolder;
using foundation::core::except::Notification;
using foundation::core::except::NotificationMessage;
using foundation::storage::vfs::AbsoluteIRI;
using support::FakeWorkingFolder;
using support::MessagesOf;
using support::NamesOf;
using testing::ElementsAre;
using testing::IsEmpty;

using Names = std::vector<std::u16string>;
using NameRange = detail::AnyRangeAdapter<std::u16string>;

/// A working folder at memory:///home, and the warnings of one conversion.
class FolderConversion : public testing::Test {
 protected:
  boost::optional<AbsoluteIRI> Convert(const std::u16string& name) {
    return ConvertUstringToAbsoluteIRI(name, workingFolder_, warnings_);
  }
  std::string ConvertAll(const NameRange& names) {
    return NamesOf(ConvertUstringRangeToAbsoluteIRIs(names, workingFolder_, warnings_));
  }

  FakeWorkingFolder workingFolder_{AbsoluteIRI(u"memory:///home")};
  Notification warnings_;
};

/// A failure that knows more than its code.
class Disconnected final : public FailedToAbsolutizeException {
 public:
  using FailedToAbsolutizeException::FailedToAbsolutizeException;
};

/// The exception object that `failure` holds.
const Disconnected* ObjectOf(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const Disconnected& object) {
    return &object;
  }
}

// One name.

using ConvertUstringToAbsoluteIRITest = FolderConversion;

TEST_F(ConvertUstringToAbsoluteIRITest, HasTheAgreedSignature) {
  EXPECT_TRUE((std::is_same_v<decltype(&ConvertUstringToAbsoluteIRI),
                              boost::optional<AbsoluteIRI> (*)(const std::u16string&, const ICurrentWorkingFolder&,
                                                               Notification&)>));
}

TEST_F(ConvertUstringToAbsoluteIRITest, GivesWhatTheWorkingFolderMakesOfTheName) {
  const auto folder = Convert(u"/a/b");

  ASSERT_TRUE(folder.has_value());
  EXPECT_EQ(*folder, AbsoluteIRI(u"memory:///a/b"));
}

TEST_F(ConvertUstringToAbsoluteIRITest, TakesARelativeNameAgainstTheGivenWorkingFolder) {
  const FakeWorkingFolder elsewhere(AbsoluteIRI(u"other:///x"));

  const auto atHome = Convert(u"sub");
  const auto atX = ConvertUstringToAbsoluteIRI(u"sub", elsewhere, warnings_);

  ASSERT_TRUE(atHome.has_value());
  EXPECT_EQ(*atHome, AbsoluteIRI(u"memory:///home/sub"));
  ASSERT_TRUE(atX.has_value());
  EXPECT_EQ(*atX, AbsoluteIRI(u"other:///x/sub"));
}

TEST_F(ConvertUstringToAbsoluteIRITest, AsksTheWorkingFolderOnceWithTheNameAsItWasTyped) {
  const std::u16string typed(u" /a;b/../\0c\xDC80\t", 13);
  workingFolder_.Reject(typed, 4);

  static_cast<void>(Convert(typed));

  EXPECT_THAT(workingFolder_.GetNames(), ElementsAre(typed));
}

TEST_F(ConvertUstringToAbsoluteIRITest, AsksForAnEmptyNameToo) {
  workingFolder_.Reject(u"", 0);

  EXPECT_FALSE(Convert(u"").has_value());
  EXPECT_THAT(workingFolder_.GetNames(), ElementsAre(u""));
  EXPECT_THAT(MessagesOf(warnings_), ElementsAre("VORNIX:mpath invalidLocation()"));
}

TEST_F(ConvertUstringToAbsoluteIRITest, LeavesTheNotificationAloneWhenTheNameIsAccepted) {
  warnings_.Add(NotificationMessage({}, "earlier", "one"));

  EXPECT_TRUE(Convert(u"/a").has_value());

  EXPECT_THAT(MessagesOf(warnings_), ElementsAre("earlier one()"));
}

TEST_F(ConvertUstringToAbsoluteIRITest, AppendsItsWarningAfterThoseThatAreThere) {
  warnings_.Add(NotificationMessage({}, "earlier", "one"));
  workingFolder_.Reject(u"gone", 4);

  EXPECT_FALSE(Convert(u"gone").has_value());

  EXPECT_THAT(MessagesOf(warnings_), ElementsAre("earlier one()", "VORNIX:mpath nameNonexistentOrNotADirectory(gone)"));
}

TEST_F(ConvertUstringToAbsoluteIRITest, WarnsWithTheNameAsItWasTypedAndNothingElse) {
  const std::u16string typed(u"./a//b;\0\xDC80 ", 10);
  workingFolder_.Reject(typed, 9);

  static_cast<void>(Convert(typed));

  ASSERT_EQ(warnings_.GetMessages().size(), 1U);
  const auto& arguments = warnings_.GetMessages().front().GetArguments();
  ASSERT_EQ(arguments.size(), 1U);
  EXPECT_EQ(std::get<std::u16string>(arguments.front()), typed);
}

TEST_F(ConvertUstringToAbsoluteIRITest, WarnsOfADerivedFailureByItsCode) {
  workingFolder_.FailWith(u"/a", std::make_exception_ptr(Disconnected(3)));

  EXPECT_FALSE(Convert(u"/a").has_value());

  EXPECT_THAT(MessagesOf(warnings_), ElementsAre("VORNIX:mpath directoryPermissionDenied(/a)"));
}

TEST_F(ConvertUstringToAbsoluteIRITest, RethrowsTheVeryExceptionThatHasNoKey) {
  const auto failure = std::make_exception_ptr(Disconnected(2));
  workingFolder_.FailWith(u"/a", failure);

  try {
    static_cast<void>(Convert(u"/a"));
    FAIL() << "the exception should pass";
  } catch (const Disconnected& passed) {
    EXPECT_EQ(&passed, ObjectOf(failure));
  }
}

/// Checks that `failure`, of another kind than the one of rejected names, comes through.
template <class Failure>
void ExpectToPass(FakeWorkingFolder& workingFolder, const Failure& failure) {
  workingFolder.FailWith(u"/a", std::make_exception_ptr(failure));
  Notification warnings;

  EXPECT_THROW(static_cast<void>(ConvertUstringToAbsoluteIRI(u"/a", workingFolder, warnings)), Failure);
  EXPECT_TRUE(warnings.IsEmpty());
}

TEST_F(ConvertUstringToAbsoluteIRITest, LetsEveryOtherExceptionPass) {
  ExpectToPass(workingFolder_, std::runtime_error("no"));
  ExpectToPass(workingFolder_, std::bad_alloc());
  ExpectToPass(workingFolder_, foundation::storage::vfs::Exception(u"/a", "no"));
  ExpectToPass(workingFolder_, RecursivePathChangeException());
  ExpectToPass(workingFolder_, 4);
}

// The table of codes, row by row.

struct Warned {
  int code;
  const char* key;

  friend void PrintTo(const Warned& row, std::ostream* out) { *out << row.code << ' ' << row.key; }
};

class CodesWithAKey : public FolderConversion, public testing::WithParamInterface<Warned> {};

TEST_P(CodesWithAKey, SkipTheNameWithAWarning) {
  workingFolder_.Reject(u"some name", GetParam().code);

  EXPECT_FALSE(Convert(u"some name").has_value());

  EXPECT_THAT(MessagesOf(warnings_), ElementsAre(std::string("VORNIX:mpath ") + GetParam().key + "(some name)"));
}

INSTANTIATE_TEST_SUITE_P(OfTheTable, CodesWithAKey,
                         testing::Values(Warned{0, "invalidLocation"}, Warned{3, "directoryPermissionDenied"},
                                         Warned{4, "nameNonexistentOrNotADirectory"},
                                         Warned{5, "nameNonexistentOrNotADirectory"},
                                         Warned{6, "nameNonexistentOrNotADirectory"},
                                         Warned{7, "nameNonexistentOrNotADirectory"},
                                         Warned{9, "directoryNameTooLong"}));

class CodesWithoutAKey : public FolderConversion, public testing::WithParamInterface<int> {
 protected:
  CodesWithoutAKey() { workingFolder_.Reject(u"bad", GetParam()); }
};

TEST_P(CodesWithoutAKey, AreTheCallersTroubleAndLeaveNoWarning) {
  EXPECT_THAT([&] { return Convert(u"bad"); },
              testing::Throws<FailedToAbsolutizeException>(
                  testing::Property("GetErrorCode", &FailedToAbsolutizeException::GetErrorCode, GetParam())));
  EXPECT_TRUE(warnings_.IsEmpty());
}

TEST_P(CodesWithoutAKey, AbortTheConversionOfAWholeRange) {
  const Names names = {u"/a", u"bad", u"/b"};

  EXPECT_THAT([&] { return ConvertAll(names); },
              testing::Throws<FailedToAbsolutizeException>(
                  testing::Property("GetErrorCode", &FailedToAbsolutizeException::GetErrorCode, GetParam())));
  EXPECT_THAT(workingFolder_.GetNames(), ElementsAre(u"/a", u"bad"));
}

INSTANTIATE_TEST_SUITE_P(OfTheTable, CodesWithoutAKey, testing::Values(1, 2, 8));
INSTANTIATE_TEST_SUITE_P(BeyondTheTable, CodesWithoutAKey,
                         testing::Values(10, 11, 256, 65536, INT_MAX, -1, -7, -256, INT_MIN, INT_MIN + 4));

// A range of names.

using ConvertUstringRangeToAbsoluteIRIsTest = FolderConversion;

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, HasTheAgreedSignature) {
  EXPECT_TRUE(
      (std::is_same_v<decltype(&ConvertUstringRangeToAbsoluteIRIs),
                      std::vector<AbsoluteIRI> (*)(const NameRange&, const ICurrentWorkingFolder&, Notification&)>));
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, OfNoNamesIsEmptyWithoutWarnings) {
  const Names none;

  EXPECT_EQ(ConvertAll(none), "");
  EXPECT_TRUE(warnings_.IsEmpty());
  EXPECT_THAT(workingFolder_.GetNames(), IsEmpty());
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, GivesTheFoldersInTheOrderOfTheNames) {
  const Names names = {u"/c", u"a", u"/b"};

  EXPECT_EQ(ConvertAll(names), "c home/a b");
  EXPECT_TRUE(warnings_.IsEmpty());
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, SkipsARejectedNameWithAWarning) {
  workingFolder_.Reject(u"./gone", 4);
  const Names names = {u"/a", u"./gone", u"/b"};

  EXPECT_EQ(ConvertAll(names), "a b");
  EXPECT_THAT(MessagesOf(warnings_), ElementsAre("VORNIX:mpath nameNonexistentOrNotADirectory(./gone)"));
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, KeepsRepeats) {
  const Names names = {u"/a", u"/b", u"/a"};

  EXPECT_EQ(ConvertAll(names), "a b a");
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, KeepsDifferentNamesOfOneFolder) {
  const Names names = {u"sub", u"/home/sub", u"./sub"};

  EXPECT_EQ(ConvertAll(names), "home/sub home/sub home/sub");
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, WarnsOfEachMentionInOrder) {
  workingFolder_.Reject(u"long", 9);
  workingFolder_.Reject(u"gone", 5);
  const Names names = {u"long", u"gone", u"/a", u"long"};

  EXPECT_EQ(ConvertAll(names), "a");
  EXPECT_THAT(MessagesOf(warnings_), ElementsAre("VORNIX:mpath directoryNameTooLong(long)",
                                                 "VORNIX:mpath nameNonexistentOrNotADirectory(gone)",
                                                 "VORNIX:mpath directoryNameTooLong(long)"));
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, OfNamesThatAreAllRejectedIsEmpty) {
  workingFolder_.Reject(u"x", 0);
  const Names names = {u"x", u"x"};

  EXPECT_EQ(ConvertAll(names), "");
  EXPECT_EQ(warnings_.GetMessages().size(), 2U);
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, LeavesTheWarningsOfAnAbortedWalk) {
  workingFolder_.Reject(u"gone", 4);
  workingFolder_.Reject(u"bad", 8);
  const Names names = {u"gone", u"/a", u"bad", u"gone"};
  warnings_.Add(NotificationMessage({}, "earlier", "one"));

  EXPECT_THROW(ConvertAll(names), FailedToAbsolutizeException);

  EXPECT_THAT(MessagesOf(warnings_), ElementsAre("earlier one()", "VORNIX:mpath nameNonexistentOrNotADirectory(gone)"));
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, LeavesTheWarningsWhenAnyOtherExceptionPasses) {
  workingFolder_.Reject(u"gone", 4);
  workingFolder_.FailWith(u"bad", std::make_exception_ptr(std::runtime_error("no")));
  const Names names = {u"gone", u"bad"};

  EXPECT_THROW(ConvertAll(names), std::runtime_error);

  EXPECT_THAT(MessagesOf(warnings_), ElementsAre("VORNIX:mpath nameNonexistentOrNotADirectory(gone)"));
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, RethrowsTheVeryExceptionThatHasNoKey) {
  const auto failure = std::make_exception_ptr(Disconnected(1));
  workingFolder_.FailWith(u"bad", failure);
  const Names names = {u"/a", u"bad"};

  try {
    ConvertAll(names);
    FAIL() << "the exception should pass";
  } catch (const Disconnected& passed) {
    EXPECT_EQ(&passed, ObjectOf(failure));
  }
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, ReservesAPlaceForEachNameBeforehand) {
  workingFolder_.Reject(u"gone", 4);
  Names names(100, u"gone");
  names.emplace_back(u"/a");

  const auto folders = ConvertUstringRangeToAbsoluteIRIs(names, workingFolder_, warnings_);

  EXPECT_EQ(folders.size(), 1U);
  EXPECT_GE(folders.capacity(), names.size());
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, ReadsAnySequenceOfNames) {
  const Names names = {u"/a", u"b", u"/c"};
  Names changeable = names;
  const std::list<std::u16string> listed(names.begin(), names.end());
  const std::deque<std::u16string> queued(names.begin(), names.end());
  const std::u16string array[] = {u"/a", u"b", u"/c"};

  EXPECT_EQ(ConvertAll(names), "a home/b c");
  EXPECT_EQ(ConvertAll(changeable), "a home/b c");
  EXPECT_EQ(ConvertAll(listed), "a home/b c");
  EXPECT_EQ(ConvertAll(queued), "a home/b c");
  EXPECT_EQ(ConvertAll(array), "a home/b c");
}

TEST_F(ConvertUstringRangeToAbsoluteIRIsTest, ReadsAViewThatIsComputedMeanwhileTwice) {
  const Names names = {u"/a", u"b", u"", u"/c"};
  int asked = 0;
  auto view = names | ranges::views::filter([&asked](const std::u16string& name) {
                ++asked;
                return !name.empty();
              });

  EXPECT_EQ(ConvertAll(view), "a home/b c");
  // To find the first name, then twice the way from there to the end: to count the names and to convert them.
  EXPECT_EQ(asked, 1 + 2 * 3);
  EXPECT_THAT(workingFolder_.GetNames(), ElementsAre(u"/a", u"b", u"/c"));
}

}  // namespace
}  // namespace Quorvex::PathManagement
