#include <gmock/gmock.h>

#include <foundation/storage/vfs/absolute_iri.hpp>
#include <foundation/storage/vfs/exception.hpp>
#include <type_traits>

namespace foundation::storage::vfs {
namespace {

const std::error_code kRefused = std::make_error_code(std::errc::permission_denied);

TEST(StorageException, NamesAMalformedTextAndWhy) {
  const Exception problem(u"ab%zz", "no escape");

  EXPECT_STREQ(problem.what(), "malformed identifier \"ab%zz\": no escape");
  EXPECT_EQ(problem.GetOffendingText(), u"ab%zz");
  EXPECT_EQ(problem.GetError(), std::errc::invalid_argument);
  EXPECT_EQ(problem.GetOperation(), "");
}

TEST(StorageException, NamesAFailedOperationAndItsLocationAndTheSystemsError) {
  const Exception problem("list", AbsoluteIRI(u"file:///x y"), kRefused);

  EXPECT_STREQ(problem.what(), "cannot list \"file:///x y\": Permission denied");
  EXPECT_EQ(problem.GetOffendingText(), u"file:///x y");
  EXPECT_EQ(problem.GetError(), std::errc::permission_denied);
  EXPECT_EQ(problem.GetOperation(), "list");
}

TEST(StorageException, PrefersAReasonToTheErrorsOwnText) {
  const Exception problem("open", AbsoluteIRI(u"file:///x"), kRefused, "it is busy");

  EXPECT_STREQ(problem.what(), "cannot open \"file:///x\": it is busy");
  EXPECT_EQ(problem.GetError(), std::errc::permission_denied);
}

TEST(StorageException, ShowsNoControlCharacterRaw) {
  const Exception problem(u"a\x1B[31m\n", "bad");

  EXPECT_STREQ(problem.what(), "malformed identifier \"a\\u{1B}[31m\\u{A}\": bad");
}

TEST(StorageException, IsCaughtAsAnInternalExceptionAndAsAStandardOne) {
  using core::except::IInternalException;

  EXPECT_THROW(throw Exception(u"x", "y"), IInternalException);
  EXPECT_THROW(throw Exception(u"x", "y"), std::exception);
  EXPECT_THROW(throw Exception(u"x", "y"), core::except::Exception<IInternalException>);
}

TEST(StorageException, KeepsItsContentWhenCopied) {
  const Exception problem("list", AbsoluteIRI(u"file:///x"), kRefused);
  Exception copy(u"other", "other");

  copy = problem;

  EXPECT_STREQ(copy.what(), problem.what());
  EXPECT_TRUE(std::is_nothrow_copy_constructible_v<Exception>);
  EXPECT_TRUE(std::is_nothrow_copy_assignable_v<Exception>);
}

TEST(ExceptionTemplate, NeedsNoTextOfItsOwn) {
  class Refusal final : public core::except::Exception<core::except::IInternalException, std::exception> {};

  EXPECT_THROW(throw Refusal(), std::exception);
}

}  // namespace
}  // namespace foundation::storage::vfs
