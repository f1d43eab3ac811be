#include <gmock/gmock.h>

#include <climits>
#include <current_working_folder/current_working_folder.hpp>
#include <foundation/core/except/exception.hpp>
#include <type_traits>

namespace Quorvex::current_working_folder {
namespace {

using foundation::core::except::IInternalException;

TEST(FailedToAbsolutizeException, HoldsAnyCode) {
  for (const int code : {0, 4, 9, 10, INT_MAX, -1, INT_MIN}) {
    EXPECT_EQ(FailedToAbsolutizeException(code).GetErrorCode(), code);
  }
}

TEST(FailedToAbsolutizeException, TellsItsCode) {
  EXPECT_STREQ(FailedToAbsolutizeException(4).what(), "a folder name cannot be made absolute (code 4)");
  EXPECT_STREQ(FailedToAbsolutizeException(-1).what(), "a folder name cannot be made absolute (code -1)");
}

TEST(FailedToAbsolutizeException, IsCaughtAsAnInternalExceptionAndAsAStandardOne) {
  EXPECT_THROW(throw FailedToAbsolutizeException(0), IInternalException);
  EXPECT_THROW(throw FailedToAbsolutizeException(0), std::exception);
}

TEST(FailedToAbsolutizeException, KeepsItsContentWhenCopiedWhichNeverFails) {
  const FailedToAbsolutizeException original(3);
  FailedToAbsolutizeException assigned(8);

  assigned = original;
  const FailedToAbsolutizeException copy(original);  // NOLINT(performance-unnecessary-copy-initialization): the subject

  EXPECT_EQ(assigned.GetErrorCode(), 3);
  EXPECT_STREQ(assigned.what(), original.what());
  EXPECT_EQ(copy.GetErrorCode(), 3);
  EXPECT_STREQ(copy.what(), original.what());
  EXPECT_TRUE(std::is_nothrow_copy_constructible_v<FailedToAbsolutizeException>);
  EXPECT_TRUE(std::is_nothrow_copy_assignable_v<FailedToAbsolutizeException>);
}

TEST(ICurrentWorkingFolder, IsAnInterfaceWithAVirtualDestructor) {
  EXPECT_TRUE(std::is_abstract_v<ICurrentWorkingFolder>);
  EXPECT_TRUE(std::has_virtual_destructor_v<ICurrentWorkingFolder>);
}

}  // namespace
}  // namespace Quorvex::current_working_folder
