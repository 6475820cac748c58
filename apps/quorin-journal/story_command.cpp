// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "journal/reading_words.h"
#include "journal/story.h"

#include <utility>

namespace reader {

namespace {

using journal::Line;

/// A run of a program, and where its first line is.
struct Session {
    std::size_t File = 0; ///< index in the files of the job
    std::int64_t Number = 0;
    Line First;
};

/// Returns the sessions that begin on a day.
std::vector<Session> SessionsOf(const std::string& day, Job& job) {
    std::vector<Session> sessions;
    for (std::size_t i = 0; i < job.Files.size(); ++i) {
        if (job.Files[i].Name.Day != day)
            continue;
        ForEachEntry(job.Files[i], job.Told, [&](const Entry& entry) {
            if (entry.Seen.Event == "start")
                sessions.push_back({i, entry.Number, entry.Object()});
        });
    }
    return sessions;
}

/// The lines of one session. It goes on in the file of a next day with a line that has the same process number.
class SessionLines {
public:
    SessionLines(const Session& session, journal::Story& story) : Session_(session), Story_(story) {}

    void TakeFirstFile(const Entry& entry) {
        if (entry.Number >= Session_.Number)
            Take(entry, entry.Number == Session_.Number);
    }
    void TakeNextFile(const Entry& entry) {
        if (entry.Seen.Event == "start" || entry.Seen.Event == "day")
            Take(entry, GoesOnWith(entry.Object()));
        else
            Take(entry, false);
    }
    bool HasEnded() const { return HasEnded_; }
    void EndOfFile() { IsOpen_ = false; }

private:
    void Take(const Entry& entry, bool begins) {
        const bool isOther = !begins && (entry.Seen.Event == "start" || entry.Seen.Event == "day");
        IsOpen_ = begins || (IsOpen_ && !isOther);
        if (!IsOpen_ || HasEnded_)
            return;
        const Line line = entry.Object();
        LastMs_ = NumberIn(line, "ms");
        HasEnded_ = entry.Seen.Event == "end";
        Story_.Take(line);
    }
    bool GoesOnWith(const Line& line) const {
        return TextIn(line, "event") == "day" && NumberIn(line, "pid") == NumberIn(Session_.First, "pid") &&
               TextIn(line, "program") == TextIn(Session_.First, "program") && NumberIn(line, "ms") >= LastMs_;
    }

    const Session& Session_;
    journal::Story& Story_;
    std::int64_t LastMs_ = 0;
    bool IsOpen_ = false; ///< the lines are those of the session
    bool HasEnded_ = false;
};

void ReadSession(const Session& session, Job& job, journal::Story& story) {
    SessionLines lines(session, story);
    const JournalFile& first = job.Files[session.File];
    ForEachEntry(first, job.Told, [&lines](const Entry& entry) { lines.TakeFirstFile(entry); });
    for (std::size_t i = session.File + 1; i < job.Files.size() && !lines.HasEnded(); ++i) {
        if (job.Files[i].Name.Root != first.Name.Root)
            continue;
        lines.EndOfFile();
        ForEachEntry(job.Files[i], job.Told, [&lines](const Entry& entry) { lines.TakeNextFile(entry); });
    }
}

std::string CommandLineOf(const Line& first) {
    std::string words = TextIn(first, "program");
    const auto found = first.find("words");
    for (const Line& word : found != first.end() && found->is_array() ? *found : Line::array())
        words += " " + (word.is_string() ? word.get<std::string>() : word.dump());
    return journal::OneLine(std::move(words));
}

void WriteStory(const Session& session, const std::string& place, const journal::Story& story, Report& told) {
    told.WriteLine(story.IsExact()
                       ? "# A session by the virtual clock: played on the same files, it gives the same files."
                       : "# An approximation: " + story.WhyNot() + ".");
    told.WriteLine("# " + place + ", begun " + journal::TimeText(TextIn(session.First, "time")) + " in " +
                   TextIn(session.First, "root"));
    told.WriteLine("# " + CommandLineOf(session.First));
    told.Write(story.Commands());
}

} // namespace

void WriteStory(Job& job) {
    const std::vector<Session> sessions = SessionsOf(job.Asked.Argument, job);
    if (sessions.empty())
        return job.Told.Failed("no session begins on " + job.Asked.Argument);
    const std::size_t count = sessions.size();
    const std::size_t chosen = job.Asked.Session == 0 ? count : job.Asked.Session;
    if (chosen > count)
        return job.Told.Failed("there are only " + std::to_string(count) + " sessions on " + job.Asked.Argument);
    journal::Story story;
    ReadSession(sessions[chosen - 1], job, story);
    WriteStory(sessions[chosen - 1], "session " + std::to_string(chosen) + " of " + std::to_string(count), story,
               job.Told);
}

} // namespace reader
