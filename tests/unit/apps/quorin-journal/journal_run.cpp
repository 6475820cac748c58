// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-journal/journal_run.h"

#include "journal/journal_format.h"

#include <cstdlib>
#include <sys/wait.h>

namespace reader {

namespace {

std::string Quoted(const std::string& word) {
    return "'" + word + "'";
}

} // namespace

std::string Journal::FileOf(const std::string& day, const std::string& root) {
    return Folder.Path(TextOf(journal::FileName{day, journal::RootKey(root)}));
}

void Journal::Bytes(const std::string& day, const std::string& bytes, const std::string& root) {
    Folder.Put(TextOf(journal::FileName{day, journal::RootKey(root)}), bytes);
}

void Journal::Day(const std::string& day, const Words& lines, const std::string& root) {
    std::string bytes;
    for (const std::string& line : lines) {
        const bool lacksTime = line.rfind("{", 0) == 0 && line.rfind("{\"time\"", 0) != 0;
        bytes += lacksTime ? "{\"time\":\"" + day + "T10:00:00\"," + line.substr(1) : line;
        bytes += "\n";
    }
    Bytes(day, bytes, root);
}

Outcome Journal::Run(const Words& words) {
    Words all = words;
    all.insert(all.end(), {"--journal", Folder.Path()});
    return Bare(all);
}

Outcome Journal::Bare(const Words& words, const std::string& environment) {
    std::string command = environment + " timeout 60 " + Quoted(QUORIN_JOURNAL);
    for (const std::string& word : words)
        command += " " + Quoted(word);
    command += " </dev/null >" + Quoted(Streams_.Path("output")) + " 2>" + Quoted(Streams_.Path("errors"));
    const int status = std::system(command.c_str());
    return {WEXITSTATUS(status), Streams_.Bytes("output"), Streams_.Bytes("errors")};
}

std::string Start(const std::string& root) {
    return R"({"ms":0,"event":"start","journal":1,"program":"quorin-console","version":"0.27","pid":7,"root":")" +
           root +
           R"(","words":["--clock","virtual"],"clock":"virtual","device":0,"os":"5.2","user":"user","screen":[640,480]})";
}

std::string Reading(const std::string& time, const std::string& verdict, const std::string& value) {
    return R"({"time":")" + time + R"(","ms":500,"event":"reading","verdict":")" + verdict +
           R"(","types":["Moisture"],"value":")" + value +
           R"(","unit":"%","variables":[],"origin":"QI-0001","row":1,"field":"Moisture","file":"qrn0001.txt","old":""})";
}

} // namespace reader
