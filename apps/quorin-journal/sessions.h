// SPDX-License-Identifier: MIT
// The sessions of a journal: from the start of a program to its end, over as many days as it ran.
#pragma once

#include "apps/quorin-journal/file_entries.h"
#include "journal/story.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace reader {

/// A run of a program, and where its first line is.
struct Session {
    std::size_t File = 0; ///< index in the files
    std::int64_t Number = 0;
    journal::Line First;
};

/// Returns the sessions that begin on a day. `files`: as FindFiles returns them.
std::vector<Session> SessionsOf(const std::string& day, const std::vector<JournalFile>& files, const ReadingTold& told);

/// Passes the lines of a session on, the first one included, to its end or to where the journal breaks off.
void ReadSession(const Session& session, const std::vector<JournalFile>& files, const ReadingTold& told,
                 const std::function<void(journal::Line)>& visit);

/// Returns the lines that come before the commands of a story: what it is, and of which session.
/// `place`: "session 1 of 2". `first`: the line with which the session begins.
std::string StoryHead(const journal::Story& story, const std::string& place, const journal::Line& first);

} // namespace reader
