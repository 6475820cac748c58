// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/sessions.h"

#include "journal/reading_words.h"

#include <utility>

namespace reader {

using journal::Line;

namespace {

/// The lines of one session. It goes on in the file of a next day with a line that has the same process number.
class SessionLines {
public:
    SessionLines(const Session& session, const std::function<void(Line)>& visit) : Session_(session), Visit_(visit) {}

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
        Line line = entry.Object();
        LastMs_ = NumberIn(line, "ms");
        HasEnded_ = entry.Seen.Event == "end";
        Visit_(std::move(line));
    }
    bool GoesOnWith(const Line& line) const {
        return TextIn(line, "event") == "day" && NumberIn(line, "pid") == NumberIn(Session_.First, "pid") &&
               TextIn(line, "program") == TextIn(Session_.First, "program") && NumberIn(line, "ms") >= LastMs_;
    }

    const Session& Session_;
    const std::function<void(Line)>& Visit_;
    std::int64_t LastMs_ = 0;
    bool IsOpen_ = false; ///< the lines are those of the session
    bool HasEnded_ = false;
};

std::string CommandLineOf(const Line& first) {
    std::string words = TextIn(first, "program");
    const auto found = first.find("words");
    for (const Line& word : found != first.end() && found->is_array() ? *found : Line::array())
        words += " " + (word.is_string() ? word.get<std::string>() : word.dump());
    return journal::OneLine(std::move(words));
}

} // namespace

std::vector<Session> SessionsOf(const std::string& day, const std::vector<JournalFile>& files,
                                const ReadingTold& told) {
    std::vector<Session> sessions;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (files[i].Name.Day != day)
            continue;
        ReadEntries(files[i], told, [&](const Entry& entry) {
            if (entry.Seen.Event == "start")
                sessions.push_back({i, entry.Number, entry.Object()});
        });
    }
    return sessions;
}

void ReadSession(const Session& session, const std::vector<JournalFile>& files, const ReadingTold& told,
                 const std::function<void(Line)>& visit) {
    SessionLines lines(session, visit);
    const JournalFile& first = files[session.File];
    ReadEntries(first, told, [&lines](const Entry& entry) { lines.TakeFirstFile(entry); });
    for (std::size_t i = session.File + 1; i < files.size() && !lines.HasEnded(); ++i) {
        if (files[i].Name.Root != first.Name.Root)
            continue;
        lines.EndOfFile();
        ReadEntries(files[i], told, [&lines](const Entry& entry) { lines.TakeNextFile(entry); });
    }
}

std::string StoryHead(const journal::Story& story, const std::string& place, const Line& first) {
    return (story.IsExact()
                ? std::string("# A session by the virtual clock: played on the same files, it gives the same files.")
                : "# An approximation: " + story.WhyNot() + ".") +
           "\n# " + place + ", begun " + journal::TimeText(TextIn(first, "time")) + " in " + TextIn(first, "root") +
           "\n# " + CommandLineOf(first) + "\n";
}

} // namespace reader
