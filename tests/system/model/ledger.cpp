// SPDX-License-Identifier: MIT
#include "tests/system/model/ledger.h"

#include "tests/system/model/letters.h"

#include <algorithm>
#include <cctype>

namespace shift {

const char* NameOf(Fate fate) {
    static const char* const names[] = {
        "on the way",      "port closed", "cut off",      "no connect", "wrong origin",  "unreadable", "emptied",
        "left in buffers", "traced",      "other screen", "no row",     "refused",       "on screen",  "replaced",
        "field taken",     "typed over",  "written over", "unsaved",    "deleted record"};
    static_assert(sizeof names / sizeof names[0] == static_cast<std::size_t>(Fate::FateCount));
    return names[static_cast<std::size_t>(fate)];
}

ResultId Ledger::Send() {
    Fates_.push_back(Fate::OnTheWay);
    Handed_.push_back(false);
    ++Counts_[0];
    return Sent();
}

void Ledger::Note(ResultId id, Fate fate) {
    if (id == 0 || id >= Fates_.size())
        return;
    Fates_[id] = fate;
    ++Counts_[static_cast<std::size_t>(fate)];
}

ResultId IdOf(const std::string& cell) {
    ResultId id = 0;
    for (const char character : cell) {
        if (character == '.')
            return id;
        if (std::isdigit(static_cast<unsigned char>(character)) == 0)
            return 0;
        id = id * 10 + static_cast<ResultId>(character - '0');
    }
    return 0;
}

std::vector<ResultId> IdsInRecords(const std::string& text) {
    static const std::string tag = "_value \""; // of [RESULT_VALUE "17.3"], in any case
    std::vector<ResultId> ids;
    for (std::size_t quote = text.find('"'); quote != std::string::npos; quote = text.find('"', quote + 1)) {
        if (quote + 1 < tag.size())
            continue;
        bool tagged = true;
        for (std::size_t i = 0; i < tag.size() && tagged; ++i)
            tagged = Lower(text[quote + 1 - tag.size() + i]) == tag[i];
        const ResultId id = tagged ? IdOf(text.substr(quote + 1, 12)) : 0;
        if (id != 0)
            ids.push_back(id);
    }
    return ids;
}

std::vector<ResultId> IdsInFields(const std::string& bytes) {
    std::vector<ResultId> ids;
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = std::min(bytes.find_first_of("|\n", start), bytes.size());
        if (const ResultId id = IdOf(bytes.substr(start, end - start)); id != 0)
            ids.push_back(id);
        start = end + 1;
    }
    return ids;
}

} // namespace shift
