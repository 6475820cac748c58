// SPDX-License-Identifier: MIT
#include "companion/arrivals.h"

#include "src/view/prompt.h"
#include "tests/support/program.h"

namespace companion {
namespace {

using namespace modQuorin;

Package Named(const Text& name) {
    return {name, {u"A|a.txt"}};
}

TEST(WaitingArrivals, AreNamedWithWhatIsWaitedFor) {
    Arrivals arrivals;
    EXPECT_EQ(arrivals.Offer(InTheWay::Record), u"");
    arrivals.Add(Named(u"climate.qvd"));
    EXPECT_EQ(arrivals.Offer(InTheWay::Record), u"Install climate.qvd when this record is done.");
    arrivals.AddDownload(u"qrn0001.txt");
    arrivals.Add(Named(u"wall.qvd"));
    EXPECT_EQ(arrivals.Offer(InTheWay::Question),
              u"Install climate.qvd, wall.qvd and open qrn0001.txt when this question is answered.");
    arrivals.DropFirst();
    arrivals.DropFirst();
    EXPECT_EQ(arrivals.Offer(InTheWay::Screen), u"Open qrn0001.txt when this screen is left.");
    arrivals.DropAll();
    EXPECT_FALSE(arrivals.Any());
}

TEST(WaitingArrivals, AreThePackagesBeforeTheLastDownload) {
    Arrivals arrivals;
    arrivals.AddDownload(u"a");
    arrivals.Add(Named(u"1.qvd"));
    arrivals.Add(Named(u"2.qvd"));
    arrivals.Add(Named(u"1.qvd"));
    arrivals.AddDownload(u"b");
    EXPECT_EQ(arrivals.First().Driver.Name, u"2.qvd");
    arrivals.DropFirst();
    EXPECT_EQ(arrivals.First().Driver.Name, u"1.qvd");
    arrivals.DropFirst();
    EXPECT_FALSE(arrivals.First().IsPackage());
    EXPECT_EQ(arrivals.First().Download, u"b");
    arrivals.DropFirst();
    EXPECT_FALSE(arrivals.Any());
}

TEST(WaitingArrivals, ReplaceAPackageOnlyAfterTheAnswerToThat) {
    Arrivals arrivals;
    arrivals.Add(Named(u"1.qvd"));
    arrivals.Add(Named(u"2.qvd"));
    EXPECT_FALSE(arrivals.First().MayReplace);
    arrivals.Answer(u"1.qvd", &Arrival::MayReplace, true);
    EXPECT_TRUE(arrivals.First().MayReplace);
    arrivals.Answer(u"1.qvd", &Arrival::MayReplace, false);
    EXPECT_EQ(arrivals.First().Driver.Name, u"2.qvd");
    EXPECT_FALSE(arrivals.First().MayReplace);
    arrivals.Add(Named(u"2.qvd"));
    arrivals.Answer(u"gone.qvd", &Arrival::MayReplace, false);
    EXPECT_TRUE(arrivals.Any());
}

class WayToTheForm : public support::Program {
protected:
    /// Returns what is in the way on a screen.
    InTheWay On(ScreenId screen) {
        Screens.CurrentScreen = screen;
        return WhatIsInTheWay(false);
    }
};

TEST_F(WayToTheForm, IsFreeOnStartDriversAndPreferencesAlone) {
    for (const ScreenId free : {ScrMain, ScrDrivers, ScrInstalledDrivers, ScrAddDriver, ScrPreferences})
        EXPECT_EQ(On(free), InTheWay::Nothing) << ScreenRow(free).Name;
    for (const ScreenId other : {ScrDownloads, ScrDownload, ScrBluetoothDebug, ScrFileDebug, ScrTextFile, ScrColumns,
                                 ScrMessage, ScrDriverProperties})
        EXPECT_EQ(On(other), InTheWay::Screen) << ScreenRow(other).Name;
    EXPECT_EQ(On(ScrInfRecord), InTheWay::Record);
    Screens.PreviousScreen = ScrFileDebug;
    EXPECT_EQ(On(ScrList), InTheWay::Screen);
    Screens.PreviousScreen = ScrPreferences;
    EXPECT_EQ(On(ScrList), InTheWay::Nothing) << "it is a list of the preferences";
}

TEST_F(WayToTheForm, IsBarredByAQuestion) {
    EXPECT_EQ(WhatIsInTheWay(true), InTheWay::Question);
    EXPECT_EQ(On(ScrInput), InTheWay::Question);
}

} // namespace
} // namespace companion
