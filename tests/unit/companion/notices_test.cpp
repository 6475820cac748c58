// SPDX-License-Identifier: MIT
#include "companion/notices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace companion {
namespace {

using testing::ElementsAre;

const Notice Disk{u"notsaved", Severity::Loss, u"the disk is full", Until::Tapped};
const Notice Driver{u"driver", Severity::Warning, u"another driver's", Until::RecordLeft};
const Notice Mailbox{u"mailbox", Severity::Warning, u"can't be deleted", Until::Withdrawn};

class OfNotices : public testing::Test {
protected:
    OfNotices() {
        List.Told = [this](const Notice& notice) { Told.push_back(notice.Words); };
    }
    Text Worst() const { return List.Standing().empty() ? Text(u"none") : List.Sorted().front().Words; }

    Notices List;
    std::vector<Text> Told;
};

TEST_F(OfNotices, ALossIsWorseThanAWarningThatCameLater) {
    EXPECT_EQ(Worst(), u"none");
    List.Raise(Disk);
    List.Raise(Driver);
    EXPECT_EQ(Worst(), u"the disk is full");
    List.Act(u"notsaved");
    EXPECT_EQ(Worst(), u"another driver's");
}

TEST_F(OfNotices, AmongEquallyBadOnesTheNewestIsTheWorst) {
    List.Raise(Driver);
    List.Raise(Mailbox);
    EXPECT_EQ(Worst(), u"can't be deleted");
}

TEST_F(OfNotices, WhatStandsAlreadyIsNotToldAgain) {
    List.Raise(Mailbox);
    List.Raise(Mailbox);
    EXPECT_THAT(Told, ElementsAre(u"can't be deleted"));
    List.Withdraw(u"mailbox");
    List.Raise(Mailbox);
    EXPECT_THAT(Told, ElementsAre(u"can't be deleted", u"can't be deleted"));
}

TEST_F(OfNotices, OtherWordsOfTheSameThingTakeThePlaceOfTheOldOnes) {
    List.Raise(Disk);
    List.Raise({u"notsaved", Severity::Loss, u"permission denied", Until::Tapped});
    EXPECT_THAT(List.Standing(), testing::SizeIs(1));
    EXPECT_EQ(Worst(), u"permission denied");
    EXPECT_THAT(Told, ElementsAre(u"the disk is full", u"permission denied"));
}

TEST_F(OfNotices, EachStandsAsLongAsItsKindDoes) {
    for (const Notice& notice : {Disk, Driver, Mailbox})
        List.Raise(notice);
    List.RecordLeft();
    EXPECT_THAT(List.Standing(), ElementsAre(Disk, Mailbox));
    List.Act(u"notsaved");
    EXPECT_THAT(List.Standing(), ElementsAre(Mailbox));
    List.Act(u"mailbox");
    EXPECT_THAT(List.Standing(), ElementsAre(Mailbox)) << "there is nothing that a person can do about it";
    List.Withdraw(u"mailbox");
    EXPECT_THAT(List.Standing(), testing::IsEmpty());
}

TEST_F(OfNotices, APersonDismissesTheOneThatWasSeenAndNoOther) {
    const Notice folder{u"folder", Severity::Warning, u"it is replaced", Until::Tapped};
    EXPECT_EQ(folder.Action, NoticeAction::Dismiss);
    EXPECT_EQ(Mailbox.Action, NoticeAction::None);
    List.Raise(folder);
    List.Raise(Disk);
    List.Act(u"notsaved");
    EXPECT_THAT(List.Standing(), ElementsAre(folder));
}

TEST_F(OfNotices, TheWorstComesFirstAndThenTheNewest) {
    const Notice place{u"place", Severity::Note, u"Data: here", Until::Withdrawn};
    for (const Notice& notice : {place, Driver, Disk, Mailbox})
        List.Raise(notice);
    EXPECT_THAT(List.Sorted(), ElementsAre(Disk, Mailbox, Driver, place));
}

TEST_F(OfNotices, OnlyWarningsAndLossesStandBehindTheWorst) {
    EXPECT_EQ(List.Behind(), 0U);
    List.Raise({u"place", Severity::Note, u"Data: here", Until::Withdrawn});
    EXPECT_EQ(Worst(), u"Data: here");
    EXPECT_EQ(List.Behind(), 0U);
    List.Raise(Driver);
    EXPECT_EQ(Worst(), u"another driver's");
    EXPECT_EQ(List.Behind(), 0U);
    List.Raise(Disk);
    List.Raise(Mailbox);
    EXPECT_EQ(List.Behind(), 2U);
}

} // namespace
} // namespace companion
