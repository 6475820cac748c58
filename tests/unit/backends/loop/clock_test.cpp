// SPDX-License-Identifier: MIT
#include "backends/loop/clock.h"

#include "backends/host/host_clock.h"

#include <gtest/gtest.h>

#include <ctime>
#include <sys/syscall.h>
#include <unistd.h>

namespace backends {
namespace {

class NoMoment : public testing::TestWithParam<const char*> {};

TEST_P(NoMoment, IsRead) {
    EXPECT_FALSE(MomentFromText(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Texts, NoMoment,
                         testing::Values("", "2007-03-05", "2007-03-05T09:30", "2007-03-05 09:30:00",
                                         "2007-02-29T09:30:00", "2007-13-05T09:30:00", "2007-00-05T09:30:00",
                                         "2007-03-00T09:30:00", "2007-04-31T09:30:00", "2007-03-05T24:00:00",
                                         "2007-03-05T09:60:00", "2007-03-05T09:30:60", "2007-03-05T09:30:00Z",
                                         "-007-03-05T09:30:00", "20x7-03-05T09:30:00", " 2007-03-05T09:30:00"));

TEST(Moment, CountsSecondsOfACalendarWithoutZones) {
    EXPECT_EQ(MomentFromText("1970-01-01T00:00:00"), 0);
    EXPECT_EQ(MomentFromText("1970-01-02T00:00:01"), 86401);
    EXPECT_EQ(MomentFromText("2008-02-29T12:00:00"), 1204286400);
}

TEST(DateText, IsADateOfTheCalendar) {
    EXPECT_EQ(DateFromText("2008-02-29"), (CalendarDate{2008, 2, 29}));
    EXPECT_EQ(DateFromText("0001-01-01"), (CalendarDate{1, 1, 1}));
    for (const char* text : {"", "2007-02-29", "0000-01-01", "2007-3-5", "2007-03-05T00:00:00", "05/03/2007"})
        EXPECT_FALSE(DateFromText(text)) << text;
}

class ClockThatIsStill : public testing::Test {
protected:
    DeviceClock Clock{*MomentFromText("2007-12-31T23:59:58")};
};

TEST_F(ClockThatIsStill, ShowsWhereItStarted) {
    const DateTime now = Clock.Now();
    EXPECT_EQ(now.Date, (CalendarDate{2007, 12, 31}));
    EXPECT_EQ(now.Hour, 23);
    EXPECT_EQ(now.Minute, 59);
    EXPECT_EQ(now.Second, 58);
    EXPECT_EQ(now.WholeSeconds, 1199145598);
    EXPECT_EQ(Clock.TimeOfDay(), 86398.0F);
    EXPECT_EQ(Clock.Milliseconds(), 0);
}

TEST_F(ClockThatIsStill, GoesOverTheYearsEnd) {
    Clock.MoveTo(2500);
    EXPECT_EQ(Clock.Now().Date, (CalendarDate{2008, 1, 1}));
    EXPECT_EQ(Clock.Now().Second, 0);
    EXPECT_EQ(Clock.TimeOfDay(), 0.5F);
    EXPECT_EQ(Clock.Now().WholeSeconds, 1199145600);
}

TEST_F(ClockThatIsStill, IsSetBackForWhatItShowsAndForNothingElse) {
    Clock.SetWall(-3600);
    EXPECT_EQ(Clock.Now().Hour, 22);
    EXPECT_EQ(Clock.TimeOfDay(), 86398.0F);
    EXPECT_EQ(Clock.SteadySeconds(), 1199145598);
    Clock.MoveTo(1500);
    EXPECT_EQ(Clock.TimeOfDay(), 86399.5F);
    Clock.MoveTo(2500);
    EXPECT_EQ(Clock.TimeOfDay(), 0.5F) << "at midnight alone it runs backwards";
    EXPECT_EQ(Clock.SteadySeconds(), 1199145600);
    EXPECT_EQ(Clock.Now().Hour, 23);
}

TEST_F(ClockThatIsStill, NeverGoesBack) {
    Clock.MoveTo(1000);
    Clock.MoveTo(400);
    EXPECT_EQ(Clock.Milliseconds(), 1000);
}

TEST_F(ClockThatIsStill, ShowsAnotherTimeWithoutMovingTheTimers) {
    Clock.MoveTo(1000);
    Clock.StandAt(*MomentFromText("2007-03-05T09:30:00"));
    EXPECT_EQ(Clock.Now().Date, (CalendarDate{2007, 3, 5}));
    EXPECT_EQ(Clock.Now().Second, 0);
    EXPECT_EQ(Clock.Milliseconds(), 1000);
    Clock.MoveTo(3000);
    EXPECT_EQ(Clock.Now().Second, 2);
}

/// The seconds by which the machine's clocks are shifted.
struct Shifts {
    std::int64_t Wall = 0;
    std::int64_t Boot = 0;
} ShiftOf;

/// The clock of a machine whose time is set, and that sleeps.
class ClockOfTheMachine : public testing::Test {
protected:
    ~ClockOfTheMachine() override { ShiftOf = {}; }
    static constexpr std::int64_t Margin = 60; // seconds; no test takes as long
};

TEST_F(ClockOfTheMachine, IsNotSetBackForWhatCountsOn) {
    const DeviceClock clock(HostTime());
    const std::int64_t shown = clock.Now().WholeSeconds;
    const std::int64_t steady = clock.SteadySeconds();
    const float ofDay = clock.TimeOfDay();
    EXPECT_NEAR(static_cast<double>(shown), static_cast<double>(steady), Margin);
    ShiftOf.Wall = -3600;
    EXPECT_LT(clock.Now().WholeSeconds, shown - 3600 + Margin);
    EXPECT_GE(clock.SteadySeconds(), steady);
    EXPECT_LT(clock.SteadySeconds(), steady + Margin);
    EXPECT_TRUE(clock.TimeOfDay() >= ofDay || clock.TimeOfDay() < static_cast<float>(Margin)) << "but at midnight";
    ShiftOf.Wall = 3600;
    EXPECT_LT(clock.SteadySeconds(), steady + Margin);
}

TEST_F(ClockOfTheMachine, CountsASleep) {
    const DeviceClock clock(HostTime());
    const std::int64_t steady = clock.SteadySeconds();
    ShiftOf.Boot = 7200;
    EXPECT_GE(clock.SteadySeconds(), steady + 7200);
}

TEST_F(ClockOfTheMachine, IsMovedByNobody) {
    DeviceClock clock(HostTime());
    EXPECT_FALSE(clock.IsVirtual());
    clock.MoveTo(1000000000);
    EXPECT_LT(clock.Milliseconds(), 1000000000);
}

} // namespace

std::int64_t ShiftOfClock(clockid_t id) {
    return id == CLOCK_REALTIME ? ShiftOf.Wall : id == CLOCK_BOOTTIME ? ShiftOf.Boot : 0;
}

} // namespace backends

/// Replaces the library's function in this whole program.
extern "C" int clock_gettime(clockid_t id, timespec* time) noexcept {
    const long result = ::syscall(SYS_clock_gettime, id, time);
    if (result == 0)
        time->tv_sec += backends::ShiftOfClock(id);
    return static_cast<int>(result);
}
