// SPDX-License-Identifier: MIT
#include "apps/page_exchange/arriving_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace apps {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Base64, IsReadWithItsPadding) {
    EXPECT_EQ(FromBase64(""), "");
    EXPECT_EQ(FromBase64("YQ=="), "a");
    EXPECT_EQ(FromBase64("YWI="), "ab");
    EXPECT_EQ(FromBase64("YWJj"), "abc");
    EXPECT_EQ(FromBase64("AP/+"), std::string("\0\xFF\xFE", 3));
}

TEST(Base64, ThatIsNoneIsRefused) {
    for (const char* const text : {"YQ=", "Y", "YW J", "YWJ.", "=YWJ", "YQ==YQ=="})
        EXPECT_FALSE(FromBase64(text)) << text;
}

class AnArrivingFile : public testing::Test {
protected:
    void SetUp() override {
        Files.Wants = [this](std::int32_t, std::int64_t at) { Wanted.push_back(at); };
        Files.Arrived = [this](const ArrivingFile& file) { Arrived.push_back(file.Bytes); };
        Files.Failed = [this](const Text& problem) { Failed.push_back(modStringTools::ToBytes(problem)); };
    }

    ArrivingFiles Files;
    std::vector<std::int64_t> Wanted;
    std::vector<std::string> Arrived, Failed;
};

TEST_F(AnArrivingFile, IsAskedForUntilItIsWhole) {
    Files.Begin(1, {.Name = u"a.qvd", .Use = "driver", .Size = 5});
    Files.TakePart(1, "YWJj");
    EXPECT_THAT(Arrived, IsEmpty());
    Files.TakePart(1, "ZGU=");
    EXPECT_THAT(Arrived, ElementsAre("abcde"));
    EXPECT_THAT(Wanted, ElementsAre(0, 3));
}

TEST_F(AnArrivingFile, ThatIsEmptyIsThereAtOnce) {
    Files.Begin(1, {.Name = u"a.qvd", .Use = "driver", .Size = 0});
    EXPECT_THAT(Arrived, ElementsAre(""));
}

/// Else it would be asked for for ever.
TEST_F(AnArrivingFile, ThatHasBecomeShorterIsTold) {
    Files.Begin(1, {.Name = u"a.qvd", .Use = "driver", .Size = 5});
    Files.TakePart(1, "");
    EXPECT_THAT(Failed, ElementsAre("a.qvd can't be read: it has changed meanwhile."));
    Files.TakePart(1, "YWJj");
    EXPECT_THAT(Arrived, IsEmpty());
}

TEST_F(AnArrivingFile, DoesNotMixWithAnother) {
    Files.Begin(1, {.Name = u"a.qvd", .Use = "driver", .Size = 3});
    Files.Begin(2, {.Name = u"b.qvd", .Use = "driver", .Size = 3});
    Files.TakePart(2, "eHl6");
    Files.TakePart(1, "YWJj");
    EXPECT_THAT(Arrived, ElementsAre("xyz", "abc"));
}

} // namespace
} // namespace apps
