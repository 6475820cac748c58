// SPDX-License-Identifier: MIT
// The storage against its literal forms, on generated cases.
#include "tests/reference/agreement.h"
#include "tests/reference/storage_comparison.h"

namespace reference {
namespace {

TEST(AgainstTheLiteralForm, LineFilesDoTheSame) {
    ExpectAgreement(CompareLineFiles, 300000);
}

TEST(AgainstTheLiteralForm, TablesDoTheSame) {
    ExpectAgreement(CompareTables, 300000);
}

TEST(AgainstTheLiteralForm, StreamsOfTheHostReadAndWriteTheSame) {
    ExpectAgreement(CompareStreams, 60000);
}

TEST(AgainstTheLiteralForm, LineFilesOfTheHostDoTheSame) {
    ExpectAgreement(CompareLineFilesOnDisk, 8000);
}

TEST(AgainstTheLiteralForm, TablesOfTheHostDoTheSame) {
    ExpectAgreement(CompareTablesOnDisk, 8000);
}

} // namespace
} // namespace reference
