// SPDX-License-Identifier: MIT
// The pattern matcher on long lines, and on random pairs of a line and a pattern.
#include "bench/inputs.h"
#include "bench/ratio.h"
#include "src/text/patterns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>

namespace bench {

namespace {

using namespace modStringTools;

constexpr std::int64_t LineLength = 10000;

/// Small letters with an X about each hundred characters.
Text LineWithMarks(std::int64_t length) {
    Generator generator(Seed);
    Text line;
    for (std::int64_t i = 0; i < length; ++i)
        line += Draw(generator, 1, 100) == 1 ? u'X' : static_cast<char16_t>(u'a' + Draw(generator, 0, 25));
    return line;
}

double MatchUpToLastMark(const Text& line) {
    std::int32_t first = 0;
    std::int32_t last = 0;
    MatchPattern(line, 1, u".+X", first, last, true);
    MustAgree("last X", last, static_cast<std::int64_t>(line.rfind(u'X')) + 1);
    return SecondsOfOne([&] { Keep(MatchPattern(line, 1, u".+X", first, last, true)); });
}

Sides ToLastMark(const std::string&) {
    const auto line = std::make_shared<Text>(LineWithMarks(LineLength));
    return {[line] { return MatchUpToLastMark(*line); },
            [line] { return SecondsOfOne([&line] { Keep(std::count(line->begin(), line->end(), u'X')); }); },
            [tenth = LineWithMarks(LineLength / 10)] { return MatchUpToLastMark(tenth); }};
}

// --- The worst of many pairs

constexpr std::int64_t Pairs = 100000;
constexpr std::int64_t Longest = 4096;
constexpr std::size_t Suspects = 50; ///< the slowest pairs, which are measured again

struct Pair {
    Text Line;
    Text Pattern;
    bool CaseSensitive = false;
    double Seconds = 0;
};

/// A length up to `Longest`: each power of two is as likely as the others.
std::size_t DrawLength(Generator& generator) {
    const double power = static_cast<double>(Draw(generator, 0, 1000)) / 1000;
    return static_cast<std::size_t>(std::pow(static_cast<double>(Longest), power));
}

/// A text over the first few letters of an alphabet, so that much of it looks alike.
Text DrawLine(Generator& generator) {
    constexpr TextView Alphabet = u"aAbB1 _\".+$^\\|x\r\n\t=[";
    const std::int64_t letters = Draw(generator, 1, static_cast<std::int64_t>(Alphabet.size()));
    Text line(DrawLength(generator), u' ');
    for (char16_t& character : line)
        character = Alphabet[static_cast<std::size_t>(Draw(generator, 0, letters - 1))];
    return line;
}

TextView DrawElement(Generator& generator, std::int64_t kinds) {
    static constexpr std::array<TextView, 20> Elements = {u".",   u"a",   u"b", u"\\w", u"\\s", u"\\S", u"\\W",
                                                          u"\\d", u"\\D", u"A", u"1",   u"\"",  u" ",   u"\\.",
                                                          u"\\+", u"^",   u"$", u"\\q", u"=",   u"|"};
    return Elements[static_cast<std::size_t>(Draw(generator, 0, kinds - 1))];
}

void DrawEnd(Generator& generator, Text& pattern) {
    if (Draw(generator, 1, 5) != 1)
        return;
    const std::int64_t dollars = Draw(generator, 1, 2) == 1 ? 1 : Draw(generator, 2, 40);
    for (auto each = pattern.rbegin(); each != pattern.rend() && each - pattern.rbegin() < dollars; ++each)
        *each = u'$';
}

/// Elements with and without repetition. Every tenth pattern has a row of four or more ".+" in it, every fourth one
/// repetitions of repetitions, and every fifth one ends in an anchor or in more `$` than one.
Text DrawPattern(Generator& generator) {
    const std::size_t length = DrawLength(generator);
    const std::int64_t kinds = Draw(generator, 1, 20);
    const std::int64_t repeatedOf = Draw(generator, 1, 10);
    const bool doubled = Draw(generator, 1, 4) == 1;
    Text pattern;
    if (Draw(generator, 1, 10) == 1)
        pattern += u'^';
    if (Draw(generator, 1, 10) == 1)
        pattern += u'+';
    if (Draw(generator, 1, 10) == 1)
        for (std::int64_t i = Draw(generator, 4, 12); i > 0; --i)
            pattern += u".+";
    while (pattern.size() < length) {
        pattern += DrawElement(generator, kinds);
        if (Draw(generator, 1, 10) <= repeatedOf)
            pattern += doubled && Draw(generator, 1, 4) == 1 ? u"++" : u"+";
    }
    pattern.resize(std::min<std::size_t>(pattern.size(), Longest));
    DrawEnd(generator, pattern);
    return pattern;
}

double SecondsOf(const Pair& pair) {
    std::int32_t first = 0;
    std::int32_t last = 0;
    return Seconds([&] { Keep(MatchPattern(pair.Line, 1, pair.Pattern, first, last, pair.CaseSensitive)); });
}

bool Slower(const Pair& a, const Pair& b) {
    return a.Seconds > b.Seconds;
}

/// Keeps the slowest pairs, the slowest first.
void Suspect(std::vector<Pair>& suspects, Pair pair) {
    if (suspects.size() == Suspects && !Slower(pair, suspects.back()))
        return;
    suspects.insert(std::upper_bound(suspects.begin(), suspects.end(), pair, Slower), std::move(pair));
    if (suspects.size() > Suspects)
        suspects.pop_back();
}

struct Trial {
    std::vector<Pair> Slowest;
    double Total = 0;
};

Trial TryPairs() {
    Generator generator(Seed);
    Trial trial;
    for (std::int64_t i = 0; i < Pairs; ++i) {
        Pair pair{DrawLine(generator), DrawPattern(generator), Draw(generator, 0, 1) == 1};
        pair.Seconds = SecondsOf(pair);
        trial.Total += pair.Seconds;
        Suspect(trial.Slowest, std::move(pair));
    }
    return trial;
}

/// Returns the largest of the suspects' times, each the best of three: another program may disturb one measurement.
double WorstOf(std::vector<Pair>& suspects) {
    for (Pair& pair : suspects)
        pair.Seconds = std::min({SecondsOf(pair), SecondsOf(pair), SecondsOf(pair)});
    std::sort(suspects.begin(), suspects.end(), Slower);
    return suspects.front().Seconds;
}

Sides Worst(const std::string&) {
    const auto trial = std::make_shared<Trial>(TryPairs());
    const auto note = [trial] {
        std::array<char, 160> text{};
        const Pair& worst = trial->Slowest.front();
        std::snprintf(text.data(), text.size(), "all pairs together %.3g s; the worst: a line of %zu, a pattern of %zu",
                      trial->Total, worst.Line.size(), worst.Pattern.size());
        return std::string(text.data());
    };
    return {[trial] { return WorstOf(trial->Slowest); }, {}, {}, {}, note};
}

} // namespace

} // namespace bench

int main(int count, char** words) {
    using namespace bench;
    return Main(count, words,
                {{"MatchPattern \".+X\" on a line of 10^4 characters", "one pass over the line", {20}, ToLastMark},
                 {"MatchPattern, worst of 10^5 generated pairs of line and pattern up to 4 KiB",
                  "10 ms",
                  {0.01, false, Figure::Product},
                  Worst}});
}
