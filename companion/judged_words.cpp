// SPDX-License-Identifier: MIT
#include "companion/judged_words.h"

#include "src/drivers/selection.h"
#include "src/view/input_fields.h"

namespace companion {

VerdictWords WordsOfJudged(const platform::Verdict& verdict, const ValueLimits* limits) {
    VerdictWords words = WordsOf(verdict, modQuorin::Selection.SelectedDriver);
    if (verdict.Fate == platform::Fate::Kept && modPDAUI::AnyInputFieldVisible())
        words.Outcome = Outcome::Alarm;
    if (const auto outside = limits != nullptr ? limits->Judge(verdict) : std::nullopt) {
        words.Line += u"; " + WordsOf(*outside);
        if (IsFail(outside->Breach))
            words.Outcome = Outcome::Alarm;
    }
    return words;
}

} // namespace companion
