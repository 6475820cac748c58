// SPDX-License-Identifier: MIT
#include "tests/blob/blob_streams.h"

namespace blob_streams {

namespace {

const std::vector<Text> StartLines = {u"[BLob]", u"[BLob]", u"[BLob]", u"[blob]", u"[BLOB 2]", u"[BLob", u" [BLob]"};
const std::vector<Text> EndLines = {u"[/BLob]", u"[/BLob]", u"[/BLob]",  u"[/BLob]",
                                    u"[/blob]", u"[/BLob",  u"[/BLOB] ", u" [/BLob]"};
const std::vector<Text> Identities = {u"A1", u"A1", u"A1", u"a1", u"B", u""};
const std::vector<Text> Names = {u"A", u"B", u"DATA", u"Site", u"a", u".", u".+", u"\\d+", u"^A", u"A$", u"", u"A+"};
const std::vector<Text> Values = {u"1", u"23.4", u"", u"x|y", u"|", u"=", u"1=2", u"long value", u"\"", u"\\"};
const std::vector<Text> Types = {u"Alpha", u"x1", u"", u"a|b", u"12|3", u"Al pha"};
const std::vector<Text> Noise = {u"",     u"noise", u"[", u"]", u"[CONNECT", u"foo[/BLob]",
                                 u"[BLo", u"\"\"",  u"|", u"=", u"[ORIGIN"};

} // namespace

Text Generator::Variable() {
    const Text name = OneOf(Names);
    return OneIn(12) ? name : name + u"=" + OneOf(Values);
}

Text Generator::VariableList() {
    Text list = OneIn(20) ? Text() : u"ORIGIN=" + OneOf(Identities);
    for (std::size_t i = Below(5); i > 0; --i)
        list += u"|" + Variable();
    return list;
}

Text Generator::QuotedLine() {
    Text line;
    for (std::size_t i = Below(7); i > 0; --i)
        line += OneOf({u"\"", u"\"", u"a", u" ", u"]", u"+"});
    return line;
}

Text Generator::LineOfBlob() {
    switch (Below(9)) {
    case 0:
        return u"[CONNECT \"" + OneOf(Identities) + u"\"]";
    case 1:
    case 2:
        return u"[ORIGIN \"" + OneOf(Identities) + u"\"]";
    case 3:
    case 4:
        return u"[DESCRIPTIVE_VAR \"" + Variable() + u"\"]";
    case 5:
        return u"[RESULT_TYPE \"" + OneOf(Types) + (OneIn(2) ? u"\"]" : u"\" \"" + OneOf(Types) + u"\"]");
    case 6:
        return u"[RESULT_VALUE \"" + OneOf(Values) + u"\"]";
    default:
        return u"[RESULT_UNIT \"" + OneOf(Values) + u"\"]";
    }
}

Text Generator::LooseLine() {
    switch (Below(4)) {
    case 0:
        return OneOf(StartLines);
    case 1:
        return OneOf(EndLines);
    case 2:
        return LineOfBlob();
    default:
        return OneOf(Noise);
    }
}

Text Generator::LineEnd() {
    static const std::vector<Text> ends = {u"\r", u"\r\n", u"\n", u"\n\r", u"\r\r", u"\r\n\n"};
    return lineEnds_ < 3 ? ends[lineEnds_] : OneOf(ends);
}

void Generator::AddLine(Text& text, const Text& line) {
    text += line;
    text += LineEnd();
}

void Generator::AddBlob(Text& text, std::size_t depth) {
    AddLine(text, OneOf(StartLines));
    for (std::size_t i = Below(6); i > 0; --i)
        if (depth < 3 && OneIn(10))
            AddBlob(text, depth + 1);
        else
            AddLine(text, OneIn(15) ? LooseLine() : LineOfBlob());
    AddLine(text, OneOf(EndLines));
}

void Generator::Damage(Text& text) {
    const std::size_t at = Below(text.size());
    switch (Below(5)) {
    case 0:
        text.erase(at, 1);
        break;
    case 1:
        text.insert(at, 1, text[at]);
        break;
    case 2:
        text[at] = modStringTools::LowerChar(text[at]);
        break;
    case 3:
        text.insert(at, OneOf({u"\r", u"\n", u"\"", u"]", u"[", u"|", u"+", u"."}));
        break;
    default:
        text[at] = OneOf({u"\u0130", u"\u212A", u"\u00C4", u"\u00E4", u"i", u" "})[0];
        break;
    }
}

Text Generator::Stream() {
    Text text;
    lineEnds_ = Below(4);
    for (std::size_t i = 1 + Below(4); i > 0; --i)
        if (OneIn(3))
            AddLine(text, LooseLine());
        else
            AddBlob(text, 1);
    if (OneIn(4))
        text += LooseLine();
    while (!text.empty() && OneIn(2))
        Damage(text);
    return text;
}

Text Generator::BlobText() {
    lineEnds_ = 0;
    Text text;
    AddBlob(text, 3);
    while (OneIn(3))
        text += OneIn(2) ? LooseLine() : LineOfBlob() + u"\r";
    while (!text.empty() && OneIn(2))
        Damage(text);
    return text;
}

} // namespace blob_streams
