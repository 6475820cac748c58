// SPDX-License-Identifier: MIT
#include "companion/judged_words.h"

#include "src/drivers/selection.h"
#include "src/view/input_fields.h"

namespace companion {

VerdictWords WordsOfJudged(const platform::Verdict& verdict) {
    VerdictWords words = WordsOf(verdict, modQuorin::Selection.SelectedDriver);
    if (verdict.Fate == platform::Fate::Kept && modPDAUI::AnyInputFieldVisible())
        words.Outcome = Outcome::Alarm;
    return words;
}

} // namespace companion
