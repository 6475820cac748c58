// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/reading_lines.h"

#include "apps/quorin-journal/columns.h"
#include "journal/reading_words.h"

namespace reader {

namespace {

constexpr std::size_t FileWidth = 11;   // qrn0001.txt
constexpr std::size_t ResultWidth = 20; // most readings; a longer one moves what follows

std::string LineFor(const journal::Line& reading) {
    const std::string file = TextIn(reading, "file");
    return journal::TimeText(TextIn(reading, "time")) + "  " + Padded(file.empty() ? "-" : file, FileWidth) + "  " +
           Padded(journal::ResultOf(reading), ResultWidth) + "  " + journal::VerdictOf(reading);
}

} // namespace

void ReadingLines::LearnRoot(const Entry& entry) {
    if (NamesRoots_ && (entry.Seen.Event == "start" || entry.Seen.Event == "day"))
        Paths_[entry.File.Name.Root] = TextIn(entry.Object(), "root");
}

void ReadingLines::Take(const Entry& entry) {
    LearnRoot(entry);
    if (entry.Seen.Event != "reading" || !Asked_.Period.Has(entry.Seen.Time))
        return;
    if (Asked_.OnlyRefused && journal::IsStored(entry.Seen.Verdict))
        return;
    if (Asked_.Json) {
        Told_.WriteLine(entry.Bytes);
        return;
    }
    WriteRoot(entry.File.Name.Root);
    Told_.WriteLine(LineFor(entry.Object()));
}

void ReadingLines::TakeUnread(const std::string& root, const journal::UnreadText& text) {
    if (!Asked_.Period.Has(text.To))
        return;
    WriteRoot(root);
    Told_.WriteLine(text.Words());
}

void ReadingLines::WriteRoot(const std::string& root) {
    if (!NamesRoots_ || root == LastRoot_)
        return;
    LastRoot_ = root;
    const std::string& path = Paths_[root];
    Told_.WriteLine((path.empty() ? root : path) + ":");
}

} // namespace reader
