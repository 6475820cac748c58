// SPDX-License-Identifier: MIT
// Every value that a byte can have, in results and between them.
#include "tests/system/serial_line/collection.h"
#include "tests/system/serial_line/records.h"

#include <gtest/gtest.h>

#include <string>

namespace line {
namespace {

/// The characters of Windows-1252 at 80 to 9F, as UTF-8. A byte without one is the control character of its number.
const char* const From80To9F[] = {"\u20AC", "\u0081", "\u201A", "\u0192", "\u201E", "\u2026", "\u2020", "\u2021",
                                  "\u02C6", "\u2030", "\u0160", "\u2039", "\u0152", "\u008D", "\u017D", "\u008F",
                                  "\u0090", "\u2018", "\u2019", "\u201C", "\u201D", "\u2022", "\u2013", "\u2014",
                                  "\u02DC", "\u2122", "\u0161", "\u203A", "\u0153", "\u009D", "\u017E", "\u0178"};

/// Returns the UTF-8 form of a byte that is not part of a UTF-8 character.
std::string Character(int byte) {
    if (byte < 0x80)
        return std::string(1, static_cast<char>(byte));
    if (byte < 0xA0)
        return From80To9F[byte - 0x80];
    return {static_cast<char>(0xC0 | byte >> 6), static_cast<char>(0x80 | (byte & 0x3F))};
}

struct Expected {
    std::string OnScreen;
    std::string InFile;
};

/// Returns the result of the value "a", the byte, "z" with the unit "u".
Expected ValueWith(int byte) {
    switch (byte) {
    case '\0':
        return {"a z u", "a z u"}; // also received for a break on the line
    case '\r':
        return {" u", " u"}; // ends the line before the closing quote
    case '\n':
        return {"a\nz u", "a z u"};
    case '|':
        return {"a z", "a z"}; // splits the value; the part after it replaces the unit
    default:
        return {"a" + Character(byte) + "z u", "a" + Character(byte) + "z u"};
    }
}

TEST(EveryByteValue, InAResultArrivesOnTheScreenAndInTheFile) {
    Collection collection;
    collection.Deliver(Hello);
    collection.Tick(2);
    std::string file = "Moisture|Temperature|Site|Meter\n";
    for (int byte = 0; byte <= 0xFF; ++byte) {
        const std::string value = std::string("a") + static_cast<char>(byte) + "z";
        collection.Deliver(Result("Moisture", value, "u"));
        collection.Tick(2);
        ASSERT_EQ(collection.Values(), ValueWith(byte).OnScreen + "\n\n\nQI-7\n") << "byte " << byte;
        file += ValueWith(byte).InFile + "|||QI-7\n";
        collection.Choose(u"New Record");
    }
    EXPECT_EQ(collection.Saved(), file + "|||\n");
}

/// Returns all byte values three times, in different orders.
std::string AllBytes() {
    std::string bytes;
    for (int step : {1, 7, 253})
        for (int i = 0; i < 256; ++i)
            bytes += static_cast<char>(i * step);
    return bytes;
}

TEST(EveryByteValue, BetweenResultsHindersNone) {
    Collection collection;
    const std::string noise = AllBytes() + "\r\n";
    collection.Deliver(noise + Hello + noise + Result("Moisture", "1", "%") + noise + Result("Temperature", "2", "K"));
    collection.Tick(2);
    EXPECT_EQ(collection.Values(), "1 %\n2 K\n\nQI-7\n");
}

TEST(EveryByteValue, InsideARecordHindersNoOtherLineOfIt) {
    Collection collection;
    std::string record = Result("Moisture", "1", "%");
    record.insert(record.find("[RESULT_VALUE"), AllBytes() + "\r\n");
    collection.Deliver(Hello + record);
    collection.Tick(2);
    EXPECT_EQ(collection.Values(), "1 %\n\n\nQI-7\n");
}

TEST(EveryByteValue, InAVariableArrivesAsInAValue) {
    Collection collection(Collection::On::Trace);
    collection.Deliver(Hello);
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        collection.Device.Main().SetRows(1);
        collection.Device.Main().SetCell(0, 0, u"");
        const std::string variable = "[DESCRIPTIVE_VAR \"Site=" + std::string(1, static_cast<char>(byte)) + "\"]\r\n";
        collection.Deliver(Result("Moisture", "1", "%", variable));
        collection.Tick(2);
        ASSERT_EQ(collection.Values(), "RT: Moisture\nDV: ORIGIN=QI-7\nDV: Site=" + Character(byte) + "\n1 %\n---\n");
    }
}

} // namespace
} // namespace line
