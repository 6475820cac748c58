// SPDX-License-Identifier: MIT
#include "companion/hints.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace companion {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OfHints : public testing::Test {
protected:
    Text Shown() const { return List.Standing().empty() ? Text(u"none") : List.Standing().front().Words; }
    std::vector<Text> Offers() const {
        std::vector<Text> words;
        if (!List.Standing().empty())
            for (const Offer& offer : List.Standing().front().Offers)
                words.push_back(offer.Words);
        return words;
    }

    /// A device as it is delivered: nothing is there.
    Surroundings Now;
    Notices List;
    Hints OfDevice{List};
};

TEST_F(OfHints, NameAPortThatWasGivenAndIsNotChosen) {
    Now = {.HasDriver = true, .NamedPort = "Com1 is /dev/ttyUSB0", .NameOfPort = "Com1"};
    OfDevice.Look(Now);
    EXPECT_EQ(Shown(), u"Com1 is /dev/ttyUSB0, and no port is chosen: nothing can be received.");
    EXPECT_THAT(Offers(), ElementsAre(u"Use Com1", u"Choose a port…", u"No hints"));
}

TEST_F(OfHints, LeadFromADriverToAnOpenLink) {
    OfDevice.Look(Now);
    EXPECT_EQ(Shown(), u"No driver is installed yet.");
    EXPECT_THAT(Offers(), ElementsAre(u"Install a driver…", u"Try the sample", u"No hints"));
    Now.HasDriver = true;
    OfDevice.Look(Now);
    EXPECT_EQ(Shown(), u"No port is chosen: nothing can be received.");
    EXPECT_THAT(Offers(), ElementsAre(u"Choose a port…", u"No hints"));
    Now.IsListOfDownloads = true;
    OfDevice.Look(Now);
    EXPECT_EQ(Shown(), u"No download yet: File, New makes one.");
    Now.HasDownload = Now.HasPort = true;
    Now.PortTrouble = "Com1 is /dev/ttyUSB0: unplugged";
    OfDevice.Look(Now);
    EXPECT_EQ(Shown(), u"Com1 is /dev/ttyUSB0: unplugged");
    EXPECT_THAT(Offers(), ElementsAre(u"Choose a port…", u"No hints"));
    Now.PortTrouble.clear();
    Now.LinkIsOpen = true;
    OfDevice.Look(Now);
    EXPECT_EQ(Shown(), u"none");
}

TEST_F(OfHints, LeadFromTheFirstScreenToTheFirstDownload) {
    Now.HasDriver = Now.HasPort = Now.IsStart = true;
    OfDevice.Look(Now);
    EXPECT_EQ(Shown(), u"Main, Start… lists the drivers: choose the one of your instrument.");
    Now.IsStart = false;
    OfDevice.Look(Now);
    EXPECT_EQ(Shown(), u"none");
    Now.IsListOfDownloads = Now.HasDownload = true;
    OfDevice.Look(Now);
    Now.IsStart = true;
    OfDevice.Look(Now);
    EXPECT_EQ(Shown(), u"none") << "it is known by now";
}

TEST_F(OfHints, AStepThatWasDoneOnceIsNotAskedForAgain) {
    Now = {.HasDriver = true, .HasDownload = true, .HasPort = true, .LinkIsOpen = true};
    OfDevice.Look(Now);
    EXPECT_THAT(OfDevice.Done(), ElementsAre("download", "driver", "link", "port"));
    for (const Surroundings& less :
         {Surroundings{}, Surroundings{.HasDriver = true}, Surroundings{.HasDriver = true, .IsListOfDownloads = true},
          Surroundings{.HasDriver = true, .HasPort = true, .PortTrouble = "Com1 is /dev/ttyUSB0: unplugged"}}) {
        OfDevice.Look(less);
        EXPECT_EQ(Shown(), u"none");
    }
}

TEST_F(OfHints, StepsOfEarlierRunsAreDone) {
    Hints later(List, {"driver", "port"});
    later.Look(Now);
    EXPECT_EQ(Shown(), u"none");
    EXPECT_FALSE(later.AsksForDriver());
    EXPECT_TRUE(OfDevice.AsksForDriver());
}

TEST_F(OfHints, EachStepIsReportedWhenItIsFirstDone) {
    int reports = 0;
    OfDevice.DoneChanged = [&reports] { ++reports; };
    OfDevice.Look(Now);
    EXPECT_EQ(reports, 0);
    Now.HasDriver = true;
    OfDevice.Look(Now);
    OfDevice.Look(Now);
    EXPECT_EQ(reports, 1);
}

TEST_F(OfHints, SwitchedOffTheyShowNothingAndStillSeeWhatIsDone) {
    OfDevice.Look(Now);
    OfDevice.SetOn(false);
    EXPECT_EQ(Shown(), u"none");
    Now.HasDriver = true;
    OfDevice.Look(Now);
    EXPECT_EQ(Shown(), u"none");
    EXPECT_THAT(OfDevice.Done(), ElementsAre("driver"));
    OfDevice.SetOn(true);
    OfDevice.Look(Now);
    EXPECT_EQ(Shown(), u"No port is chosen: nothing can be received.");
}

TEST_F(OfHints, AreShownBeforeNotesAndAfterWarnings) {
    OfDevice.Look(Now);
    List.Raise({u"place", Severity::Note, u"Data: here", Until::Withdrawn});
    EXPECT_EQ(List.Sorted().front().Words, u"No driver is installed yet.");
    List.Raise({u"mailbox", Severity::Warning, u"can't be deleted", Until::Withdrawn});
    EXPECT_EQ(List.Sorted().front().Words, u"can't be deleted");
    EXPECT_EQ(List.Behind(), 0U) << "a hint is not counted among the warnings";
}

} // namespace
} // namespace companion
