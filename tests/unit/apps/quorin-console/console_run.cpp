// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-console/console_run.h"

#include <cstdlib>
#include <sstream>
#include <sys/wait.h>

namespace console {

namespace {

std::string Quoted(const std::string& word) {
    std::string quoted = "'";
    for (const char character : word)
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return quoted + "'";
}

Words LinesOf(const std::string& bytes) {
    std::istringstream in(bytes);
    Words lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

std::vector<Json> Outcome::All(const std::string& member) const {
    std::vector<Json> all;
    for (const std::string& line : Lines) {
        const Json object = Json::parse(line);
        if (object.contains(member))
            all.push_back(object);
    }
    return all;
}

Json Outcome::Last(const std::string& member) const {
    const std::vector<Json> all = All(member);
    return all.empty() ? Json() : all.back();
}

Console::Console() {
    InstallMeter("Quorin/");
    Root.Put("settings.ini", "[Settings]\nComPort=Com1\n");
}

void Console::InstallMeter(const std::string& folder) {
    Root.Put(folder + "drivers.txt", "NAME|INFFILE\nMeter|meter.txt\n");
    Root.Put(folder + "qrnctrl.txt", "DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n");
    Root.Put(folder + "meter.txt", "FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                                   "Moisture|1||Moisture||||\nDay|1|||||DATE|\n");
}

Outcome Console::Start(const std::string& command, const std::string& input) {
    return Shell(command + " <input >output 2>errors", input);
}

std::string Console::Program() const {
    return Quoted(QUORIN_CONSOLE) + " --root " + Quoted(Root.Path().string());
}

Outcome Console::Shell(const std::string& words, const std::string& input) {
    Streams_.Put("input", input);
    Streams_.Put("output", "");
    Streams_.Put("errors", "");
    const int status = std::system(("cd " + Quoted(Streams_.Path().string()) + " && " + words).c_str());
    Outcome run;
    run.Status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.Output = Streams_.Bytes("output");
    run.Lines = LinesOf(run.Output);
    run.Errors = Streams_.Bytes("errors");
    return run;
}

Outcome Console::With(const Words& options, const std::string& input) {
    std::string command = Program();
    for (const std::string& option : options)
        command += " " + Quoted(option);
    return Start(command, input);
}

Outcome Console::Tell(const Words& commands, const Words& options) {
    std::string input;
    for (const std::string& command : commands)
        input += command + "\n";
    return With(options, input);
}

Outcome Console::Bare(const Words& options, const std::string& environment) {
    std::string command = environment + " " + Quoted(QUORIN_CONSOLE);
    for (const std::string& option : options)
        command += " " + Quoted(option);
    return Start(command, "");
}

Words Joined(const std::vector<Words>& parts) {
    Words all;
    for (const Words& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace console
