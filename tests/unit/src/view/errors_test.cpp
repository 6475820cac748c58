// SPDX-License-Identifier: MIT
#include "src/view/platform/errors.h"
#include "tests/support/printed_rows.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

using support::PrintTo;

struct Words {
    ErrorNumber Error;
    Text Said;
};

class ErrorInWords : public testing::TestWithParam<Words> {};

TEST_P(ErrorInWords, IsWhatAPersonReadsBehindTheNameOfAFile) {
    EXPECT_EQ(ErrorText(GetParam().Error), GetParam().Said);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ErrorInWords,
    testing::Values(Words{FileNotFound, u"it does not exist"}, Words{DeviceFailed, u"the device failed"},
                    Words{WentStale, u"the connection to it was lost"},
                    Words{Damaged, u"it is damaged, or a file of another kind"},
                    Words{InUse, u"another program is using it"}, Words{ReadKept, u"another program is using it"},
                    Words{FileExists, u"it already exists"}, Words{DiskFull, u"the disk is full"},
                    Words{FileChanged, u"another program has changed it"},
                    Words{RowNotFound, u"the row is not in the file"}, Words{PathNotFound, u"its folder is gone"},
                    Words{NotAvailable, u"it is not available"}, Words{PermissionDenied, u"permission denied"},
                    Words{PathRefused, u"the name is not allowed"}, Words{ErrorNumber{4711}, u"error 4711"}));

/// A file that can't be read for any other reason must not be created again.
TEST(AMissingFile, IsOneThatIsNotThereOrCanNotBe) {
    for (const ErrorNumber error : {FileNotFound, PathRefused})
        EXPECT_TRUE(IsMissing(error)) << NumberOf(error);
    for (const ErrorNumber error : {NoError, DeviceFailed, WentStale, Damaged, PermissionDenied, InUse, ReadKept,
                                    NotAvailable, DiskFull, TooLong, PathNotFound, FileChanged, FileExists})
        EXPECT_FALSE(IsMissing(error)) << NumberOf(error);
}

} // namespace
} // namespace platform
