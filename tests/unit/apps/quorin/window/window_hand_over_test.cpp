// SPDX-License-Identifier: MIT
#include "apps/quorin/window_hand_over.h"

#include "companion/words.h"
#include "src/text/text.h"
#include "tests/support/in_a_window.h"
#include "tests/support/temporary_root.h"

#include <QTest>

#include <gmock/gmock.h>

#include <fstream>

namespace quorin {
namespace {

using testing::HasSubstr;

class HandOverOfTheWindow : public windowtest::InAWindow {
protected:
    HandOverOfTheWindow() {
        Put("drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
        Put("qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
        Put("qrn0001.txt", "Moisture\n1 %\n2 %\n");
        HandOver.Process.Program = QStringLiteral(QUORIN_PROGRAM);
        HandOver.Process.FirstWords += {QStringLiteral("--name"), QStringLiteral("Shed")};
    }
    backends::DeviceOptions Options() {
        backends::DeviceOptions options;
        options.Root = Device.Folder.Path();
        return options;
    }
    std::string Told() {
        for (const companion::Notice& notice : Device.Platform.onlooker.notices.Standing())
            if (notice.About == companion::AboutHandOver)
                return modStringTools::ToBytes(notice.Words);
        return "nothing";
    }
    void To(const std::string& folder) {
        HandOver.To(folder);
        EXPECT_EQ(Told(), "Handing over to " + folder + "…");
        ASSERT_TRUE(QTest::qWaitFor([this] { return Told().rfind("Handing", 0) != 0; }, 60'000));
    }
    std::string Handed(const std::string& file) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Stick.Path()))
            if (entry.path().filename() == file)
                return Stick.Bytes(std::filesystem::relative(entry.path(), Stick.Path()).string());
        return "none";
    }

    TemporaryRoot Stick;
    WindowSettings Remembered{Device.Folder.Path() / "settings.ini"};
    WindowHandOver HandOver{Device.Platform, Remembered, Options(), ""};
};

TEST_F(HandOverOfTheWindow, CopiesWhatIsNewAndSaysHowMuch) {
    To(Stick.Path());
    EXPECT_EQ(Handed("qrn0001.txt"), "Moisture\n1 %\n2 %\n");
    EXPECT_THAT(Told(), HasSubstr("Handed over to " + Stick.Path() + ": 3 files, 2 records."));
    Put("qrn0001.txt", "Moisture\n1 %\n2 %\n3 %\n");
    To(Stick.Path());
    EXPECT_THAT(Told(), HasSubstr(": 1 file, 1 record."));
}

TEST_F(HandOverOfTheWindow, SaysWhyItHasFailed) {
    To(Stick.Path("gone"));
    EXPECT_THAT(Told(), HasSubstr("nothing is handed over. "));
    EXPECT_THAT(Told(), HasSubstr(Stick.Path("gone")));
    HandOver.Process.Program = QStringLiteral("/no/such/program");
    To(Stick.Path());
    EXPECT_THAT(Told(), HasSubstr("The hand-over to " + Stick.Path() + " has failed."));
}

TEST_F(HandOverOfTheWindow, TellsAtTheStartWhatWasNotHandedOver) {
    const auto count = [this] {
        Device.Platform.onlooker.notices.Withdraw(companion::AboutHandOver);
        HandOver.Count();
        return QTest::qWaitFor([this] { return Told() != "nothing"; }, 3000) ? Told() : "nothing";
    };
    EXPECT_EQ(count(), "nothing") << "nobody hands over here";
    To(Stick.Path());
    Put("qrn0001.txt", "Moisture\n1 %\n2 %\n3 %\n4 %\n");
    EXPECT_EQ(count(), "2 records are not handed over.");
    std::ofstream(Device.Folder.Path() / "hand-over.jsonl") << "{\"hand-over\":99}\n";
    EXPECT_THAT(count(), HasSubstr("a newer program has written it"));
}

} // namespace
} // namespace quorin
