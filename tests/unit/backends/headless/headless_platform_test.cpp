// SPDX-License-Identifier: MIT
#include "backends/headless/headless_platform.h"

#include "tests/support/printed_rows.h"
#include "tests/support/program.h"

namespace backends::headless {
namespace {

using support::PrintTo;

struct Reports {
    std::int32_t Type;
    Box WorkArea;
    std::int32_t Dimension;
    Text Volume;
};

void PrintTo(const Reports& reports, std::ostream* out) {
    *out << "type " << reports.Type;
}

class DeviceOfType : public testing::TestWithParam<Reports> {};

TEST_P(DeviceOfType, ReportsWhatItIs) {
    support::TestDevice device(support::OfType(GetParam().Type));
    SystemObject& system = device.Platform.system;
    EXPECT_EQ(system.DeviceType(), GetParam().Type);
    EXPECT_EQ(system.VersionText(), u"5.2");
    EXPECT_EQ(system.UserName(), u"user");
    EXPECT_EQ(system.WorkArea(), GetParam().WorkArea);
    EXPECT_EQ(system.ScreenDimension(), GetParam().Dimension);
    EXPECT_EQ(device.Platform.volumes.First(), GetParam().Volume);
    EXPECT_EQ(device.Platform.volumes.Next(), u"");
}

// clang-format off: a row a type
INSTANTIATE_TEST_SUITE_P(
    Types, DeviceOfType,
    testing::Values(Reports{0, {0, 0, 640, 480}, 640, u".\\"}, Reports{1, {0, 0, 160, 160}, 160, u"Device:\\"},
                    Reports{2, {0, 0, 240, 320}, 320, u"C:\\"}, Reports{3, {0, 0, 240, 320}, 320, u"\\"},
                    Reports{4, {0, 0, 240, 320}, 320, u"C:\\"}, Reports{5, {0, 0, 240, 320}, 320, u"C:\\"},
                    Reports{6, {0, 0, 240, 320}, 320, u"C:\\"}, Reports{7, {0, 0, 240, 320}, 320, u"\\"},
                    Reports{8, {0, 0, 240, 320}, 320, u"C:\\"}, Reports{9, {0, 0, 240, 320}, 320, u"C:\\"},
                    Reports{10, {0, 0, 240, 320}, 320, u"C:\\"}, Reports{32767, {0, 0, 240, 320}, 320, u"C:\\"}));
// clang-format on

TEST(DeviceWithOptions, ReportsThoseInstead) {
    DeviceOptions options = support::OfType(7);
    options.OsVersion = u"4.21";
    options.User = u"Ann";
    options.Screen = ScreenSize{320, 200};
    options.Volumes = {{u"A:\\", 100}, {u"B:\\", std::nullopt}};
    support::TestDevice device(options);
    EXPECT_EQ(device.Platform.system.VersionText(), u"4.21");
    EXPECT_EQ(device.Platform.system.UserName(), u"Ann");
    EXPECT_EQ(device.Platform.system.ScreenDimension(), 320);
    EXPECT_EQ(device.Platform.system.WorkArea(), (Box{0, 0, 320, 200}));
    EXPECT_EQ(device.Platform.volumes.First(), u"A:\\");
    EXPECT_EQ(device.Platform.volumes.Next(), u"B:\\");
    EXPECT_EQ(device.Platform.volumes.Next(), u"");
}

TEST(DeviceWithOptions, MayReportNoVersionAtAll) {
    DeviceOptions options;
    options.OsVersion = u"";
    support::TestDevice device(options);
    EXPECT_EQ(device.Platform.system.VersionText(), u"");
}

TEST(FormAsDesigned, FillsTheScreenInTwips) {
    support::TestDevice device(support::OfType(3));
    EXPECT_EQ(device.Platform.form.Bounds(), (Box{0, 0, 3600, 4800}));
    EXPECT_EQ(device.Platform.form.ClientArea(), (Box{0, 0, 240, 320}));
}

TEST(FormAsDesigned, HasItsFontTimersAndNothingOpen) {
    support::TestDevice device;
    auto& form = device.Platform;
    EXPECT_EQ(form.grdMain.FontName(), u"AFPalm");
    EXPECT_EQ(form.grdMain.FontSize(), 8);
    EXPECT_EQ(form.grdTitle.FontSize(), 8);
    EXPECT_TRUE(form.tmrBlue.Enabled());
    EXPECT_EQ(form.tmrBlue.Interval(), 500);
    EXPECT_FALSE(form.tmrHoldEvent.Enabled());
    EXPECT_EQ(form.tmrHoldEvent.Interval(), 1000);
    EXPECT_FALSE(form.tmrMenus.Enabled());
    for (const Control* field :
         {static_cast<Control*>(&form.txtInputField), static_cast<Control*>(&form.cboInputField),
          static_cast<Control*>(&form.cbotxtInputField), static_cast<Control*>(&form.dteInputField),
          static_cast<Control*>(&form.lstHoldMenu), static_cast<Control*>(&form.lblStatus)})
        EXPECT_FALSE(field->Visible());
}

/// A box inside another.
class BoxesOfTheForm : public support::Program {};

TEST_F(BoxesOfTheForm, AreAnsweredInnermostFirst) {
    auto& boxes = Device.Platform.boxes;
    Device.WillAnswer(BoxAnswer::Yes);
    Device.WillAnswer(BoxAnswer::No);
    BoxAnswer inner = BoxAnswer::Ok;
    Device.WhileABoxIsOpen([&] {
        EXPECT_EQ(boxes.Current()->Message, u"outer");
        inner = boxes.Show(u"inner", BoxButtons::YesNo, BoxIcon::Question, u"title");
        EXPECT_EQ(boxes.Current()->Message, u"outer");
    });
    EXPECT_EQ(boxes.Show(u"outer", BoxButtons::YesNo, BoxIcon::None, u""), BoxAnswer::No);
    EXPECT_EQ(inner, BoxAnswer::Yes);
    EXPECT_EQ(boxes.Current(), nullptr);
    EXPECT_THAT(Device.Did.Messages(), testing::ElementsAre(u"outer", u"inner"));
}

struct AnswerRow {
    BoxButtons Buttons;
    BoxAnswer Given;
    Refusal Why;
};

class AnswerToABox : public support::Program, public testing::WithParamInterface<AnswerRow> {};

TEST_P(AnswerToABox, IsOneOfItsButtons) {
    Device.WhileABoxIsOpen([this] { EXPECT_EQ(Answer(Device.Hand, GetParam().Given), GetParam().Why); });
    Device.WillAnswer(GetParam().Buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::No);
    Device.Platform.boxes.Show(u"text", GetParam().Buttons, BoxIcon::None, u"");
}

const char* const OkAlone = "the box has only an Ok button";
const char* const YesAndNo = "the box has a Yes and a No button";
INSTANTIATE_TEST_SUITE_P(Rows, AnswerToABox,
                         testing::Values(AnswerRow{BoxButtons::Ok, BoxAnswer::Ok, ""},
                                         AnswerRow{BoxButtons::Ok, BoxAnswer::Yes, OkAlone},
                                         AnswerRow{BoxButtons::Ok, BoxAnswer::No, OkAlone},
                                         AnswerRow{BoxButtons::YesNo, BoxAnswer::Yes, ""},
                                         AnswerRow{BoxButtons::YesNo, BoxAnswer::No, ""},
                                         AnswerRow{BoxButtons::YesNo, BoxAnswer::Ok, YesAndNo}));

TEST_F(BoxesOfTheForm, AreNotAnsweredWhenNoneIsOpen) {
    EXPECT_EQ(Answer(Device.Hand, BoxAnswer::Ok), "no message box is open");
}

} // namespace
} // namespace backends::headless
