// SPDX-License-Identifier: MIT
#include "companion/link_line.h"

#include <gtest/gtest.h>

#include <ostream>

namespace companion {
namespace {

constexpr bool Alive = true;

LinkView Serial() {
    LinkView link;
    link.Road = LinkRoad::Serial;
    link.Wanted = true;
    link.Open = true;
    link.Port = "Com1";
    link.Path = "/dev/ttyUSB0";
    link.Heard = true;
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
    bool IsAlive;
};

void PrintTo(const LineRow& row, std::ostream* out) {
    *out << row.Case;
}

class LineOfTheLink : public testing::TestWithParam<LineRow> {};

TEST_P(LineOfTheLink, TellsHowItIs) {
    const LinkLine line = LinkLineOf(GetParam().Link);
    EXPECT_EQ(line.Text, GetParam().Text);
    EXPECT_EQ(line.Alive, GetParam().IsAlive);
}

// clang-format off: a row a case
const LineRow Rows[] = {
    {"no port", LinkView{}, "Link off: no port is chosen", !Alive},
    {"nothing open",
     With(Serial(),
          [](LinkView& link) {
              link.Wanted = false;
              link.Open = false;
          }),
     "Link off: no download is open for Com1", !Alive},
    {"two questions stand over a serial port",
     With(Serial(),
          [](LinkView& link) {
              link.Held = true;
              link.Waits = 4711;
          }),
     "Link held: a question is open, 4711 characters are waiting", !Alive},
    {"two questions stand over a mailbox",
     With(Serial(),
          [](LinkView& link) {
              link.Held = true;
              link.Road = LinkRoad::Server;
          }),
     "Link held: a question is open, the mailbox is waiting", !Alive},
    {"nothing heard", With(Serial(), [](LinkView& link) { link.Heard = false; }),
     "Link open: Com1 (/dev/ttyUSB0); no record yet", !Alive},
    {"noise alone", Serial(), "Link open: Com1 (/dev/ttyUSB0); characters arrive, but no record yet", !Alive},
    {"a record just now", With(Serial(), [](LinkView& link) { link.RecordAge = 0; }),
     "Link open: Com1 (/dev/ttyUSB0); last record 0 s ago", Alive},
    {"a record within the minute", With(Serial(), [](LinkView& link) { link.RecordAge = 59; }),
     "Link open: Com1 (/dev/ttyUSB0); last record 59 s ago", Alive},
    {"quiet for a minute", With(Serial(), [](LinkView& link) { link.RecordAge = 60; }),
     "Link open but quiet: Com1 (/dev/ttyUSB0); last record 1 min ago", !Alive},
    {"quiet for hours", With(Serial(), [](LinkView& link) { link.RecordAge = 7500; }),
     "Link open but quiet: Com1 (/dev/ttyUSB0); last record 2 h 5 min ago", !Alive},
    {"pulled a moment after a record",
     With(Serial(),
          [](LinkView& link) {
              link.Open = false;
              link.RecordAge = 3;
              link.Trouble = "/dev/ttyUSB0 is not there";
          }),
     "Link down: Com1: /dev/ttyUSB0 is not there, trying again; last record 3 s ago", !Alive},
    {"not tried yet", With(Serial(), [](LinkView& link) { link.Open = false; }),
     "Link down: Com1: waiting for it to open", !Alive},
    {"no server",
     With(Serial(),
          [](LinkView& link) {
              link.Road = LinkRoad::Server;
              link.Open = false;
          }),
     "Link down: waiting for the RFCOMM server", !Alive},
    {"a server",
     With(Serial(),
          [](LinkView& link) {
              link.Road = LinkRoad::Server;
              link.RecordAge = 5;
          }),
     "Link open: RFCOMM server; last record 5 s ago", Alive},
    {"a connection",
     With(Serial(),
          [](LinkView& link) {
              link.Road = LinkRoad::Connection;
              link.Port = "BT1";
              link.Path = "";
          }),
     "Link open: BT1; no record yet", !Alive},
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
