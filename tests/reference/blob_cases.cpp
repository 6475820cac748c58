// SPDX-License-Identifier: MIT
#include "tests/reference/blob_cases.h"

namespace reference {

namespace {

constexpr TextView StartLines[] = {u"[BLob]", u"[BLob]", u"[BLob]", u"[blob]", u"[BLOB 2]", u"[BLob", u" [BLob]"};
constexpr TextView EndLines[] = {u"[/BLob]", u"[/BLob]", u"[/BLob]",  u"[/BLob]",
                                 u"[/blob]", u"[/BLob",  u"[/BLOB] ", u" [/BLob]"};
constexpr TextView Identities[] = {u"A1", u"A1", u"A1", u"a1", u"B", u""};
constexpr TextView Names[] = {u"A",    u"B",  u"DATA", u"Site", u"a",  u"=",   u".",      u".+",
                              u"\\d+", u"^A", u"A$",   u"",     u"A+", u"\\A", u"\u212A", u"k"};
constexpr TextView Values[] = {u"1",   u"23.4", u"",   u"x|y",        u"|",  u"=",
                               u"1=2", u"=2",   u"==", u"long value", u"\"", u"\\"};
constexpr TextView Types[] = {u"Alpha", u"x1", u"", u"a|b", u"12|3", u"Al pha", u"a\" \"b\" \" \"", u"\" \" \""};
constexpr TextView Noise[] = {u"",     u"noise", u"[", u"]", u"[CONNECT", u"foo[/BLob]",
                              u"[BLo", u"\"\"",  u"|", u"=", u"[ORIGIN",  u"\u5B5B\u0D0D\u0A0A"};
constexpr TextView ShortLines[] = {u"[BLob",  u"[/BLob]", u"[RESULT_UNIT \"u\"]", u"", u"[ORIGIN \"A\"]",
                                   u"[/BLob", u"x",       u"[CONNECT \"A\"]"};
constexpr TextView OddLineEnds[] = {u"\r", u"\r\n", u"\n", u"\n\r", u"\r\r", u"\r\n\n", u"\n\n", u"\r\n\n\n", u""};

Text Tag(TextView tag, TextView quoted) {
    return Text(tag).append(u" \"").append(quoted).append(u"\"]");
}

} // namespace

Text BlobCases::Variable() {
    const Text name(Chosen_.Of(Names));
    return Chosen_.OneIn(12) ? name : (name + u"=").append(Chosen_.Of(Values));
}

Text BlobCases::VariableList() {
    Text list;
    if (!Chosen_.OneIn(20))
        list.append(u"ORIGIN=").append(Chosen_.Of(Identities));
    for (std::uint32_t i = Chosen_.Below(5); i > 0; --i)
        list += u"|" + Variable();
    return list;
}

Text BlobCases::QuotedLine() {
    Text line;
    for (std::uint32_t i = Chosen_.Below(7); i > 0; --i)
        line += Chosen_.Of(u"\"\"\"a ]+\u2222");
    return line;
}

Text BlobCases::LineOfBlob() {
    switch (Chosen_.Below(9)) {
    case 0:
        return Tag(u"[CONNECT", Chosen_.Of(Identities));
    case 1:
    case 2:
        return Tag(u"[ORIGIN", Chosen_.Of(Identities));
    case 3:
    case 4:
        return Tag(u"[DESCRIPTIVE_VAR", Variable());
    case 5: {
        Text types(Chosen_.Of(Types));
        if (Chosen_.OneIn(2))
            types.append(u"\" \"").append(Chosen_.Of(Types));
        return Tag(u"[RESULT_TYPE", types);
    }
    case 6:
        return Tag(u"[RESULT_VALUE", Chosen_.Of(Values));
    default:
        return Tag(u"[RESULT_UNIT", Chosen_.Of(Values));
    }
}

Text BlobCases::LooseLine() {
    switch (Chosen_.Below(4)) {
    case 0:
        return Text(Chosen_.Of(StartLines));
    case 1:
        return Text(Chosen_.Of(EndLines));
    case 2:
        return LineOfBlob();
    default:
        return Text(Chosen_.Of(Noise));
    }
}

TextView BlobCases::LineEnd() {
    return LineEnds_ < 3 ? OddLineEnds[LineEnds_] : Chosen_.Of(OddLineEnds);
}

void BlobCases::AddLine(Text& text, TextView line) {
    text.append(line).append(LineEnd());
}

void BlobCases::AddBlob(Text& text, std::uint32_t depth) {
    AddLine(text, Chosen_.Of(StartLines));
    for (std::uint32_t i = Chosen_.Below(6); i > 0; --i)
        if (depth < 3 && Chosen_.OneIn(10))
            AddBlob(text, depth + 1);
        else
            AddLine(text, Chosen_.OneIn(15) ? LooseLine() : LineOfBlob());
    AddLine(text, Chosen_.Of(EndLines));
}

/// Adds a BLob with many variables and many results, as from an instrument with many channels. It tests how much is
/// kept for each result.
void BlobCases::AddLongBlob(Text& text) {
    AddLine(text, u"[BLob]");
    for (std::uint32_t i = Chosen_.Below(64); i > 0; --i)
        AddLine(text, Tag(u"[DESCRIPTIVE_VAR", Text(u"a channel's name") + modStringTools::NumberText(i) + u"=1"));
    for (std::uint32_t i = Chosen_.Below(64); i > 0; --i)
        AddLine(text, Chosen_.OneIn(20) ? LineOfBlob() : Tag(u"[RESULT_UNIT", u"u"));
    AddLine(text, u"[/BLob]");
}

void BlobCases::Damage(Text& text) {
    const std::size_t at = Chosen_.Below(static_cast<std::uint32_t>(text.size()));
    switch (Chosen_.Below(5)) {
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
        text.insert(at, 1, Chosen_.Of(u"\r\n\"][|+."));
        break;
    default:
        text[at] = Chosen_.Of(u"\u0130\u212A\u00C4\u00E4i \u5B0D");
        break;
    }
}

Text BlobCases::Stream() {
    Text text;
    LineEnds_ = Chosen_.Below(4);
    for (std::uint32_t i = 1 + Chosen_.Below(4); i > 0; --i)
        if (Chosen_.OneIn(3))
            AddLine(text, LooseLine());
        else
            AddBlob(text, 1);
    if (Chosen_.OneIn(4))
        text += LooseLine();
    while (!text.empty() && Chosen_.OneIn(2))
        Damage(text);
    return text;
}

Text BlobCases::ShortStream() {
    Text text;
    LineEnds_ = Chosen_.Below(6);
    for (std::uint32_t i = 1 + Chosen_.Below(9); i > 0; --i)
        AddLine(text, Chosen_.Of(ShortLines));
    return text;
}

Text BlobCases::BlobText() {
    LineEnds_ = 0;
    Text text;
    if (Chosen_.OneIn(200))
        AddLongBlob(text);
    else
        AddBlob(text, 3);
    while (Chosen_.OneIn(3))
        text += Chosen_.OneIn(2) ? LooseLine() : LineOfBlob() + u"\r";
    while (!text.empty() && Chosen_.OneIn(2))
        Damage(text);
    return text;
}

} // namespace reference
