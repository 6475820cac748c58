// SPDX-License-Identifier: MIT
#include "tests/system/stories/story.h"

#include "tests/support/lines.h"
#include "tests/support/places.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <vector>

namespace story {

namespace {

namespace fs = std::filesystem;
using support::Lines;

std::string Contents(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

bool BeginsWith(const std::string& line, const char* start) {
    return line.rfind(start, 0) == 0;
}

bool IsProse(const std::string& line) {
    return line.empty() || line[0] == '#';
}

/// A command for the program, with the prose above it.
struct Command {
    std::vector<std::string> Prose;
    std::string Text;
};

/// A line with a `$`, and the commands if it starts the program.
struct Step {
    std::vector<std::string> Prose;
    std::string Line;
    std::deque<Command> Commands;
};

struct Script {
    std::vector<Step> Steps;
    std::vector<std::string> LastProse;
};

Script Parse(const std::string& text) {
    Script script;
    std::vector<std::string> prose;
    for (const std::string& line : Lines(text)) {
        if (IsProse(line)) {
            prose.push_back(line);
        } else if (BeginsWith(line, "$ ")) {
            script.Steps.push_back({prose, line.substr(2), {}});
            prose.clear();
        } else if (line[0] == '>' && !script.Steps.empty()) {
            const std::size_t start = line.find_first_not_of("> ");
            script.Steps.back().Commands.push_back({prose, start == std::string::npos ? "" : line.substr(start)});
            prose.clear();
        }
    }
    script.LastProse = prose;
    return script;
}

class Player {
public:
    explicit Player(const fs::path& console) : Console_(console) {
        std::string name = (support::PlaceInMemory() / "quorin-story-XXXXXX").string();
        Base_ = mkdtemp(name.data());
        fs::create_directory(Root());
    }
    ~Player() {
        std::error_code ignored;
        fs::remove_all(Base_, ignored);
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    void Run(Step step) {
        Say(step.Prose);
        Say("$ " + step.Line);
        if (BeginsWith(step.Line, "quorin-console"))
            RunConsole(step);
        else
            RunShell(step.Line);
    }

    void Say(const std::vector<std::string>& lines) {
        for (const std::string& line : lines)
            Say(line);
    }

    std::string Told() const { return Told_; }

private:
    fs::path Root() const { return Base_ / "root"; }

    void Say(const std::string& line) { Told_ += line + "\n"; }

    int Shell(const std::string& command) {
        const std::string line = "cd '" + Root().string() + "' && { " + command + "\n} >'" + (Base_ / "out").string() +
                                 "' 2>'" + (Base_ / "err").string() + "' <'" + (Base_ / "in").string() + "'";
        const int status = std::system(line.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    void SayEnd(int status) {
        for (const std::string& line : Lines(Contents(Base_ / "err")))
            Say("stderr: " + line);
        if (status != 0)
            Say("[exit status " + std::to_string(status) + "]");
    }

    void RunShell(const std::string& command) {
        std::ofstream(Base_ / "in");
        const int status = Shell(command);
        Say(Lines(Contents(Base_ / "out")));
        SayEnd(status);
    }

    void RunConsole(Step& step) {
        std::ofstream in(Base_ / "in");
        for (const Command& command : step.Commands)
            in << command.Text << "\n";
        in.close();
        const int status = Shell("'" + Console_.string() + "' --root ." + step.Line.substr(14));
        for (const std::string& line : Lines(Contents(Base_ / "out")))
            SayAnswer(line, step.Commands);
        for (const Command& command : step.Commands)
            Say("(not read) " + command.Text);
        SayEnd(status);
    }

    void SayAnswer(const std::string& line, std::deque<Command>& commands) {
        const auto answer = nlohmann::ordered_json::parse(line, nullptr, false);
        if (answer.is_object() && answer.contains("ready")) {
            SayNextCommand(answer["ready"].get<int>(), commands);
        } else if (answer.is_object() && answer.contains("show")) {
            for (const std::string& picture : Lines(answer["show"].get<std::string>()))
                Say("    " + picture);
        } else {
            Say(line);
        }
    }

    void SayNextCommand(int depth, std::deque<Command>& commands) {
        if (commands.empty())
            return; // the end of the input
        Say(commands.front().Prose);
        Say(std::string(static_cast<std::size_t>(depth) + 1, '>') + " " + commands.front().Text);
        commands.pop_front();
    }

    fs::path Console_;
    fs::path Base_;
    std::string Told_;
};

} // namespace

std::vector<fs::path> Stories(const fs::path& folder) {
    std::vector<fs::path> stories;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".story")
            stories.push_back(entry.path());
    }
    std::sort(stories.begin(), stories.end());
    return stories;
}

std::string Title(const fs::path& story) {
    std::string title;
    bool capital = true;
    for (const char character : story.stem().string()) {
        const auto letter = static_cast<unsigned char>(character);
        const bool counts = std::isalnum(letter) != 0;
        if (counts)
            title += capital ? static_cast<char>(std::toupper(letter)) : character;
        capital = !counts;
    }
    return title;
}

std::string Play(const std::string& text, const fs::path& console) {
    const Script script = Parse(text);
    Player player(console);
    for (const Step& step : script.Steps)
        player.Run(step);
    player.Say(script.LastProse);
    return player.Told();
}

std::string Difference(const std::string& expected, const std::string& actual) {
    const std::vector<std::string> old = Lines(expected);
    const std::vector<std::string> now = Lines(actual);
    std::size_t head = 0;
    while (head < old.size() && head < now.size() && old[head] == now[head])
        ++head;
    std::size_t tail = 0;
    while (tail < old.size() - head && tail < now.size() - head &&
           old[old.size() - 1 - tail] == now[now.size() - 1 - tail])
        ++tail;
    std::string text;
    for (std::size_t i = head; i < old.size() - tail; ++i)
        text += "- " + old[i] + "\n";
    for (std::size_t i = head; i < now.size() - tail; ++i)
        text += "+ " + now[i] + "\n";
    return text.empty() ? text : "from line " + std::to_string(head + 1) + " on:\n" + text;
}

} // namespace story
