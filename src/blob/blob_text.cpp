// SPDX-License-Identifier: MIT
#include "src/blob/blob_text.h"

#include "src/blob/tags.h"
#include "src/text/characters.h"

namespace modBLob {

namespace {

Text Line(TextView tag, TextView inside) {
    return Text(tag) + u" \"" + Text(inside) + u"\"]" + LineEnd;
}

Text Joined(const std::vector<Text>& texts, TextView between) {
    Text all;
    for (const Text& text : texts)
        all.append(&text == &texts.front() ? TextView() : between).append(text);
    return all;
}

} // namespace

Text ValueAndUnitOf(const platform::Reading& reading) {
    return reading.Value + u" " + reading.Unit;
}

// All variables are one line: the decoder puts a line of its own for each into the list by name, and mistakes names
// that end alike for each other.
Text BlobOf(const platform::Reading& reading) {
    Text blob = Text(StartTag) + u"]" + LineEnd;
    if (!reading.Origin.empty())
        blob += Line(OriginTag, reading.Origin);
    if (reading.Variables.size() > 1)
        blob += Line(DescriptiveVarTag, Joined({reading.Variables.begin() + 1, reading.Variables.end()}, u"|"));
    if (reading.Types.size() > 1 || (reading.Types.size() == 1 && !reading.Types.front().empty()))
        blob += Line(ResultTypeTag, Joined(reading.Types, u"\" \""));
    blob += Line(ResultValueTag, reading.Value);
    blob += Line(ResultUnitTag, reading.Unit);
    return blob += ExactEndLine;
}

} // namespace modBLob
