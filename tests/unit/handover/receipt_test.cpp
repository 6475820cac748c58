// SPDX-License-Identifier: MIT
#include "handover/receipt.h"

#include "tests/support/temporary_root.h"

#include <gmock/gmock.h>

namespace handover {

namespace {

TEST(Receipts, KeepWhatTheyCantRead) {
    const TemporaryRoot place(support::PlaceInMemory());
    place.Put("r", "{\"hand-over\":1}\n{\"file\":\"a.txt\",\"sha256\":\"12\"}\nodd\n");
    Receipt receipt;
    EXPECT_EQ(receipt.Read(place.Path("r")), "");
    EXPECT_EQ(receipt.OddLines(), 1u);
    EXPECT_NE(receipt.Find("a.txt", "12"), nullptr);
    EXPECT_EQ(receipt.Find("a.txt", "13"), nullptr);
    EXPECT_EQ(receipt.Write(place.Path("r")), "");
    EXPECT_THAT(place.Bytes("r"), testing::HasSubstr("\nodd\n"));
}

TEST(Receipts, AnyOtherFileIsRefused) {
    const TemporaryRoot place(support::PlaceInMemory());
    place.Put("r", "notes of mine\n");
    Receipt receipt;
    EXPECT_THAT(receipt.Read(place.Path("r")), testing::HasSubstr("move it away"));
}

} // namespace

} // namespace handover
