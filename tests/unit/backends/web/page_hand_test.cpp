// SPDX-License-Identifier: MIT
#include "backends/web/page_hand.h"

#include "tests/unit/backends/web/page_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace backends::web {
namespace {

using testing::Contains;

class OnARecord : public testing::Test {
protected:
    void SetUp() override {
        Device.PutDriver();
        Device.Start();
        Device.OpenRecord();
    }
    void Tap(std::int32_t x, std::int32_t y) {
        const std::string there = "\"x\":" + std::to_string(x) + ",\"y\":" + std::to_string(y);
        Device.Send({Device.Act("press", there), Device.Act("release", there)});
    }
    std::string Field() const { return "\"field\":" + Device.Seen()["input"]["id"].dump(); }
    std::string Bytes() const { return Device.Folder.Bytes("Quorin/qrn0001.txt"); }

    static constexpr std::int32_t Value = 400; ///< a place in the column of the values
    PageDevice Device;
};

TEST_F(OnARecord, ATypedValueIsStored) {
    Tap(Value, 5);
    Device.Send({Device.Act("edit", Field() + ",\"words\":\"wall\",\"caret\":4")});
    Device.Choose("Close");
    EXPECT_EQ(Bytes(), "Place|Count\nwall|\n");
}

TEST_F(OnARecord, TheScreenSaysWhetherItIsSaved) {
    EXPECT_EQ(Device.Seen()["unsaved"], false);
    Tap(Value, 5);
    Device.Send({Device.Act("edit", Field() + ",\"words\":\"wall\",\"caret\":4")});
    Tap(5, 25);
    EXPECT_EQ(Device.Seen()["unsaved"], true);
    Device.Choose("New Record");
    EXPECT_EQ(Device.Seen()["unsaved"], false);
}

/// A table of another program may have letters of an old code page.
TEST_F(OnARecord, BytesThatAreNoUtf8SurviveTypingBesideThem) {
    Device.Choose("Close");
    Device.Folder.Put("Quorin/qrn0001.txt", "Place|Count\nCaf\xE9|\n");
    Device.Choose("Open");
    Tap(Value, 5);
    auto units = Device.Seen()["input"]["units"];
    ASSERT_EQ(units, journal::Line::array({'C', 'a', 'f', 0xDCE9}));
    units.push_back('!');
    Device.Send({Device.Act("edit", Field() + R"(,"words":"Caf?!","caret":5,"units":)" + units.dump())});
    Device.Choose("Close");
    EXPECT_EQ(Bytes(), "Place|Count\nCaf\xE9!|\n");
}

TEST_F(OnARecord, TypingForAClosedFieldIsDropped) {
    Tap(Value, 5);
    const std::string old = Field();
    Tap(Value, 25);
    ASSERT_EQ(Device.Seen()["input"]["name"], "Count");
    Device.Send({Device.Act("edit", old + ",\"words\":\"late\",\"caret\":4")});
    EXPECT_EQ(Device.Seen()["input"]["text"], "");
}

TEST_F(OnARecord, AnActForAnotherScreenIsDropped) {
    Device.Send({R"({"kind":"press","stage":1,"x":400,"y":5})", R"({"kind":"release","stage":1})"});
    EXPECT_TRUE(Device.Seen()["input"].is_null());
}

TEST_F(OnARecord, AnItemThatHasChangedIsNotChosen) {
    Device.Send({Device.Act("item", R"("menu":2,"item":1,"words":"Something Else")")});
    EXPECT_THAT(Device.Texts(), Contains("1/1"));
    Device.Choose("New Record");
    EXPECT_THAT(Device.Texts(), Contains("2/2"));
}

TEST_F(OnARecord, TabOpensTheNextField) {
    Tap(Value, 5);
    Device.Send({Device.Act("keydown", "\"key\":-1"), Device.Act("keyup", "\"key\":-1")});
    EXPECT_EQ(Device.Seen()["input"]["name"], "Count");
    Device.Send({Device.Act("keydown", "\"key\":-2"), Device.Act("keyup", "\"key\":-2")});
    EXPECT_EQ(Device.Seen()["input"]["name"], "Place");
}

TEST_F(OnARecord, AnArrowMovesTheSelectionOneRow) {
    Tap(5, 5);
    ASSERT_EQ(Device.Seen()["grid"]["row"], 0);
    Device.Send({Device.Act("keydown", "\"key\":40"), Device.Act("keyup", "\"key\":40")});
    EXPECT_EQ(Device.Seen()["grid"]["row"], 1);
}

/// A double click on Yes does not answer the next question, which nobody has read.
TEST_F(OnARecord, OnlyTheAnswerToTheOpenBoxCounts) {
    Device.Choose("New Record");
    const std::string yes = R"({"kind":"answer","box":17,"yes":true})";
    Device.Send({Device.Act("item", R"("menu":2,"item":3,"words":"Delete Record")"), yes, yes,
                 R"({"kind":"answer","box":33,"yes":false})"});
    EXPECT_TRUE(Device.Seen()["box"].is_null());
    EXPECT_THAT(Device.Texts(), Contains("2/2"));
}

TEST_F(OnARecord, TheFormTakesUpTheRoomOfThePage) {
    Device.Send({R"({"kind":"size","width":300,"height":600})"});
    EXPECT_EQ(Device.Seen()["form"], journal::Line::array({300, 600}));
    const auto box = Device.Seen()["grid"]["box"];
    EXPECT_LE(box[2].get<int>(), 300);
    EXPECT_GT(box[3].get<int>(), 480);
}

} // namespace
} // namespace backends::web
