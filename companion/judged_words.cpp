// SPDX-License-Identifier: MIT
#include "companion/judged_words.h"

#include "src/drivers/selection.h"
#include "src/view/input_fields.h"

namespace companion {

namespace {

/// Of the mark, which is not the one of a good reading: "▲ " or "✖ ".
Text MarkOf(const OutsideOf& outside) {
    return IsFail(outside.Breach) ? u"✖ " : u"▲ ";
}

} // namespace

Text JudgedWords::Line() const {
    constexpr std::size_t Mark = 2; // with its blank
    if (!Outside)
        return Verdict.Line;
    return MarkOf(*Outside) + (IsFail(Outside->Breach) ? u"fail: " : u"warning: ") + Verdict.Line.substr(Mark) + u"; " +
           WordsOf(*Outside);
}

Text JudgedWords::Limit() const {
    if (!Outside)
        return {};
    return MarkOf(*Outside) + (IsFail(Outside->Breach) ? u"fail " : u"warn ") +
           (IsLow(Outside->Breach) ? u"< " : u"> ") + Outside->Limit;
}

JudgedWords WordsOfJudged(const platform::Verdict& verdict, const ValueLimits* limits) {
    JudgedWords words{WordsOf(verdict, modQuorin::Selection.SelectedDriver), std::nullopt};
    if (verdict.Fate == platform::Fate::Kept && modPDAUI::AnyInputFieldVisible())
        words.Verdict.Outcome = Outcome::Alarm;
    words.Outside = limits != nullptr ? limits->Judge(verdict) : std::nullopt;
    if (words.Outside && IsFail(words.Outside->Breach))
        words.Verdict.Outcome = Outcome::Alarm;
    return words;
}

} // namespace companion
