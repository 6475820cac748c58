// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "apps/quorin-journal/sessions.h"

namespace reader {

void WriteStory(Job& job) {
    const ReadingTold told = ToldTo(job.Told);
    const std::vector<Session> sessions = SessionsOf(job.Asked.Argument, job.Files, told);
    if (sessions.empty())
        return job.Told.Failed("no session begins on " + job.Asked.Argument);
    const std::size_t count = sessions.size();
    const std::size_t chosen = job.Asked.Session == 0 ? count : job.Asked.Session;
    if (chosen > count)
        return job.Told.Failed("there are only " + std::to_string(count) + " sessions on " + job.Asked.Argument);
    const Session& session = sessions[chosen - 1];
    journal::Story story;
    ReadSession(session, job.Files, told, [&story](const journal::Line& line) { story.Take(line); });
    const std::string place = "session " + std::to_string(chosen) + " of " + std::to_string(count);
    job.Told.Write(StoryHead(story, place, session.First) + story.Commands());
}

} // namespace reader
