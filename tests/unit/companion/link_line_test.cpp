// SPDX-License-Identifier: MIT
#include "companion/link_line.h"

#include <gtest/gtest.h>

#include <ostream>

namespace companion {
namespace {

constexpr auto Plain = LineLook::Plain;
constexpr auto Alive = LineLook::Alive;
constexpr auto Alarm = LineLook::Alarm;

LinkView Serial() {
    LinkView link;
    link.Kind = LinkKind::Serial;
    link.Wanted = true;
    link.Open = true;
    link.Port = "Com1";
    link.Path = "/dev/ttyUSB0";
    return link;
}

/// A reading that was taken, and what was heard, this many seconds ago.
LinkView Taken(std::int64_t age, std::int64_t heardAge) {
    LinkView link = Serial();
    link.Last = LastReading{{u"● Moisture 14.1 % → Moisture"}, u"20:30:12", age};
    link.HeardAge = heardAge;
    return link;
}

LinkView Refused(std::int64_t age) {
    LinkView link = Taken(age, age);
    link.Last->Words = {u"○ refused: no row of Meter asks for \"Bogus\"", Outcome::Alarm};
    return link;
}

LinkView With(LinkView link, void (*change)(LinkView&)) {
    change(link);
    return link;
}

struct LineRow {
    const char* Case;
    LinkView Link;
    const char* Text;
    LineLook Look;
    const char* News;
};

void PrintTo(const LineRow& row, std::ostream* out) {
    *out << row.Case;
}

class LineOfTheLink : public testing::TestWithParam<LineRow> {};

TEST_P(LineOfTheLink, TellsHowItIs) {
    const LinkLine line = LinkLineOf(GetParam().Link);
    EXPECT_EQ(line.Text, GetParam().Text);
    EXPECT_EQ(line.Look, GetParam().Look);
    EXPECT_EQ(line.News, GetParam().News);
}

// clang-format off: a row a case
const LineRow Rows[] = {
    {"no port", LinkView{}, "Link off: no port is chosen", Plain, "Link off: no port is chosen"},
    {"nothing open", With(Serial(), [](LinkView& link) { link.Wanted = link.Open = false; }),
     "Link off: no download is open for Com1", Plain, "Link off: no download is open for Com1"},
    {"two questions stand over a serial port",
     With(Serial(),
          [](LinkView& link) {
              link.Held = true;
              link.Waits = 4711;
          }),
     "Link held: two questions are open, 4711 characters are waiting", Plain,
     "Link held: two questions are open, 4711 characters are waiting"},
    {"two questions stand over a serial port that nothing came from",
     With(Serial(), [](LinkView& link) { link.Held = true; }), "Link held: two questions are open", Plain,
     "Link held: two questions are open"},
    {"two questions stand over a mailbox",
     With(Serial(),
          [](LinkView& link) {
              link.Held = true;
              link.Kind = LinkKind::Server;
          }),
     "Link held: two questions are open, the mailbox is waiting", Plain,
     "Link held: two questions are open, the mailbox is waiting"},
    {"two questions stand over a connection, which nothing is read from",
     With(Serial(),
          [](LinkView& link) {
              link.Held = true;
              link.Kind = LinkKind::Connection;
          }),
     "Link open: Com1 (/dev/ttyUSB0); no reading yet", Plain, "Link open: Com1 (/dev/ttyUSB0); no reading yet"},
    {"nothing heard", Serial(), "Link open: Com1 (/dev/ttyUSB0); no reading yet", Plain,
     "Link open: Com1 (/dev/ttyUSB0); no reading yet"},
    {"noise alone", With(Serial(), [](LinkView& link) { link.HeardAge = 59; }),
     "Link open: Com1 (/dev/ttyUSB0); characters arrive, but no reading yet", Plain,
     "Link open: Com1 (/dev/ttyUSB0); characters arrive, but no reading yet"},
    {"noise a while ago", With(Serial(), [](LinkView& link) { link.HeardAge = 60; }),
     "Link open: Com1 (/dev/ttyUSB0); characters came 1 min ago, but no reading yet", Plain,
     "Link open: Com1 (/dev/ttyUSB0); characters came, but no reading yet"},
    {"a reading just now", Taken(0, 0), "● Moisture 14.1 % → Moisture, 20:30:12", Alive,
     "● Moisture 14.1 % → Moisture, 20:30:12"},
    {"a reading within the minute", Taken(59, 59), "● Moisture 14.1 % → Moisture, 20:30:12", Alive,
     "● Moisture 14.1 % → Moisture, 20:30:12"},
    {"quiet for a minute", Taken(60, 60),
     "Link open but quiet for 1 min: Com1 (/dev/ttyUSB0); last: ● Moisture 14.1 % → Moisture, 20:30:12", Plain,
     "Link quiet; last: ● Moisture 14.1 % → Moisture, 20:30:12"},
    {"quiet for hours", Taken(7500, 7500),
     "Link open but quiet for 2 h 5 min: Com1 (/dev/ttyUSB0); last: ● Moisture 14.1 % → Moisture, 20:30:12", Plain,
     "Link quiet; last: ● Moisture 14.1 % → Moisture, 20:30:12"},
    {"quiet since noise that came after the reading", Taken(7500, 61),
     "Link open but quiet for 1 min: Com1 (/dev/ttyUSB0); last: ● Moisture 14.1 % → Moisture, 20:30:12", Plain,
     "Link quiet; last: ● Moisture 14.1 % → Moisture, 20:30:12"},
    {"noise after the last reading", Taken(60, 59),
     "● Moisture 14.1 % → Moisture, 20:30:12; characters arrive, but no reading", Plain,
     "● Moisture 14.1 % → Moisture, 20:30:12"},
    {"a reading that a person did not want",
     With(Taken(0, 0), [](LinkView& link) { link.Last->Words.Outcome = Outcome::Left; }),
     "● Moisture 14.1 % → Moisture, 20:30:12", Plain, "● Moisture 14.1 % → Moisture, 20:30:12"},
    {"refused", Refused(3), "○ refused: no row of Meter asks for \"Bogus\", 3 s ago", Alarm,
     "○ refused: no row of Meter asks for \"Bogus\", 20:30:12"},
    {"refused and then quiet", Refused(7500), "○ refused: no row of Meter asks for \"Bogus\", 2 h 5 min ago", Alarm,
     "○ refused: no row of Meter asks for \"Bogus\", 20:30:12"},
    {"pulled a moment after a reading",
     With(Taken(3, 3),
          [](LinkView& link) {
              link.Open = false;
              link.DownFor = 2;
              link.Trouble = "/dev/ttyUSB0 is not there";
          }),
     "Link down for 2 s: Com1: /dev/ttyUSB0 is not there, trying again; last: ● Moisture 14.1 % → Moisture, 20:30:12",
     Alarm, "Link down: Com1: /dev/ttyUSB0 is not there, trying again"},
    {"pulled a moment after a reading that was refused", With(Refused(4), [](LinkView& link) { link.Open = false; }),
     "○ refused: no row of Meter asks for \"Bogus\", 4 s ago", Alarm,
     "○ refused: no row of Meter asks for \"Bogus\", 20:30:12"},
    {"down for longer than a refused reading is shown",
     With(Refused(5),
          [](LinkView& link) {
              link.Open = false;
              link.DownFor = 4;
          }),
     "Link down for 4 s: Com1: waiting for it to open; last: ○ refused: no row of Meter asks for \"Bogus\", 20:30:12",
     Alarm, "Link down: Com1: waiting for it to open"},
    {"an adapter with a long name",
     With(Serial(),
          [](LinkView& link) { link.Path = "/dev/serial/by-id/usb-FTDI_FT232R_USB_UART_A10KZP5N-if00-port0"; }),
     "Link open: Com1 (/dev/serial/…UART_A10KZP5N-if00-port0); no reading yet", Plain,
     "Link open: Com1 (/dev/serial/…UART_A10KZP5N-if00-port0); no reading yet"},
    {"an adapter with a long name that is not there",
     With(Serial(),
          [](LinkView& link) {
              link.Path = "/dev/serial/by-id/usb-FTDI_FT232R_USB_UART_A10KZP5N-if00-port0";
              link.Open = false;
              link.Trouble = link.Path + " is not there";
          }),
     "Link down: Com1: /dev/serial/…UART_A10KZP5N-if00-port0 is not there, trying again", Plain,
     "Link down: Com1: /dev/serial/…UART_A10KZP5N-if00-port0 is not there, trying again"},
    {"not tried yet", With(Serial(), [](LinkView& link) { link.Open = false; }),
     "Link down: Com1: waiting for it to open", Plain, "Link down: Com1: waiting for it to open"},
    {"no server",
     With(Serial(),
          [](LinkView& link) {
              link.Kind = LinkKind::Server;
              link.Open = false;
              link.DownFor = 7500;
          }),
     "Link down for 2 h 5 min: waiting for the RFCOMM server", Alarm, "Link down: waiting for the RFCOMM server"},
    {"a server", With(Serial(), [](LinkView& link) { link.Kind = LinkKind::Server; }),
     "Link open: RFCOMM server; no reading yet", Plain, "Link open: RFCOMM server; no reading yet"},
    {"a connection",
     With(Serial(),
          [](LinkView& link) {
              link.Kind = LinkKind::Connection;
              link.Port = "BT1";
              link.Path = "";
          }),
     "Link open: BT1; no reading yet", Plain, "Link open: BT1; no reading yet"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Cases, LineOfTheLink, testing::ValuesIn(Rows));

TEST(WorkOfTheWindow, HasItsWords) {
    EXPECT_STREQ(WorkText(Work::None), "");
    EXPECT_STREQ(WorkText(Work::Long), "Working…");
    EXPECT_STREQ(WorkText(Work::Waiting), "Another program is using this file: waiting…");
}

} // namespace
} // namespace companion
