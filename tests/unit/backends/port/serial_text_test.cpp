// SPDX-License-Identifier: MIT
#include "backends/port/serial_text.h"

#include "src/text/windows_1252.h"
#include "tests/support/printed_rows.h"

#include <gtest/gtest.h>

#include <random>

using backends::SerialText;

namespace {

using support::PrintTo;

struct Row {
    std::string Bytes;
    Text Characters;
    std::size_t Waiting = 0;
};

/// Returns the C1 control character for a byte that Windows-1252 leaves undefined.
Text Control(char16_t number) {
    return Text(1, number);
}

class DecodesBytes : public testing::TestWithParam<Row> {};

TEST_P(DecodesBytes, InOneRead) {
    SerialText decoder;
    EXPECT_EQ(decoder.Decode(GetParam().Bytes), GetParam().Characters);
    EXPECT_EQ(decoder.Pending(), GetParam().Waiting);
}

TEST_P(DecodesBytes, InTwoReadsCutAnywhere) {
    const std::string& bytes = GetParam().Bytes;
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
        SerialText decoder;
        Text text = decoder.Decode(bytes.substr(0, cut));
        text += decoder.Decode(bytes.substr(cut));
        EXPECT_EQ(text, GetParam().Characters) << "cut behind byte " << cut;
        EXPECT_EQ(decoder.Pending(), GetParam().Waiting) << "cut behind byte " << cut;
    }
}

TEST_P(DecodesBytes, ByteByByte) {
    SerialText decoder;
    Text text;
    for (const char byte : GetParam().Bytes)
        text += decoder.Decode({&byte, 1});
    EXPECT_EQ(text, GetParam().Characters);
    EXPECT_EQ(decoder.Pending(), GetParam().Waiting);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DecodesBytes,
    testing::Values(Row{"", u""}, Row{"[BLob]\r\n", u"[BLob]\r\n"}, Row{std::string("\0\x7F\0", 3), u" \x7F "},
                    Row{"\xC2\xB5g \xE2\x82\xAC \xF0\x9F\x98\x80!", u"µg € \xD83D\xDE00!"},
                    Row{"\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
                        u"\x0080\x07FF\x0800\xFFFF\xD800\xDC00\xDBFF\xDFFF"},
                    Row{"\xB5g/l", u"µg/l"},
                    Row{"20 \xB0"
                        "C\r\n",
                        u"20 °C\r\n"},
                    Row{"Gr\xF6\xDF"
                        "e\r\n",
                        u"Größe\r\n"},
                    Row{"\x80\x85\x99\x9F\xA0", u"€…™Ÿ\x00A0"},
                    Row{"\x81\x8D\x8F\x90\x9D",
                        Control(0x81) + Control(0x8D) + Control(0x8F) + Control(0x90) + Control(0x9D)},
                    Row{"\xC0\xAF!", u"À¯!"}, Row{"\xC1\xBF!", u"Á¿!"}, Row{"\xE0\x9F\xBF!", u"àŸ¿!"},
                    Row{"\xED\xA0\x80!", u"í\x00A0€!"}, Row{"\xF0\x8F\xBF\xBF!", Text(u"ð") + Control(0x8F) + u"¿¿!"},
                    Row{"\xF4\x90\x80\x80!", Text(u"ô") + Control(0x90) + u"€€!"}, Row{"\xF5\x80\x80\x80!", u"õ€€€!"},
                    Row{"\xFF\xFE!", u"ÿþ!"}, Row{"\xE2\x82!", u"â‚!"}, Row{"\xE2\x82\xC3\xA9", u"â‚é"},
                    Row{"\xE2\xE2\x82\xAC", u"â€"}, Row{"\xF0\x9F\x98!", u"ðŸ˜!"}, Row{"\xF0\x9F\xC2\xB5", u"ðŸµ"},
                    Row{"a\xC3", u"a", 1}, Row{"a\xE2\x82", u"a", 2}, Row{"a\xF0\x9F\x98", u"a", 3},
                    Row{"\xE9\xE9", u"é", 1}));

TEST(SerialTextReset, ForgetsWhatWaits) {
    SerialText decoder;
    EXPECT_EQ(decoder.Decode("\xE2\x82"), u"");
    decoder.Reset();
    EXPECT_EQ(decoder.Pending(), 0U);
    EXPECT_EQ(decoder.Decode("\xAC"), u"¬");
}

/// A mailbox's file is first read as a text file. The result must be the same text as over the line.
TEST(SerialTextAndTextFiles, ReadTheSameBytesAlike) {
    std::mt19937 choose(20070305);
    const std::string_view some("aZ\r\n\x80\x8D\x9F\xA0\xBF\xC1\xC2\xC3\xDF\xE0\xE2\xED\xEF\xF0\xF4\xF5\xFF", 21);
    for (int i = 0; i < 20000; ++i) {
        std::string bytes;
        for (std::size_t length = choose() % 8; length > 0; --length)
            bytes += some[choose() % some.size()];
        bytes += '\n'; // so that no character is incomplete
        SerialText decoder;
        Text ofFile = modStringTools::FromBytes(bytes);
        modStringTools::ReadRawBytesAsWindows1252(ofFile);
        EXPECT_EQ(decoder.Decode(bytes), ofFile) << testing::PrintToString(bytes);
    }
}

} // namespace
