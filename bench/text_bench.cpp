// SPDX-License-Identifier: MIT
// The time of the text tools. The argument of each benchmark is the length of its text in characters; where the time is
// linear, a text 100 times as long takes 100 times as long.
#include "src/text/patterns.h"
#include "src/text/ranges.h"

#include <benchmark/benchmark.h>

namespace {

using namespace modStringTools;

/// `piece` again and again, `length` characters of it.
Text Repeated(TextView piece, std::int64_t length) {
    Text text;
    while (text.size() < static_cast<std::size_t>(length))
        text += piece;
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void Look(benchmark::State& state, const Text& text, TextView pattern) {
    for (auto _ : state)
        benchmark::DoNotOptimize(HasPattern(text, pattern, false, false));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size() * sizeof(char16_t)));
}

// A line that is no tag, as nearly all are: the first character decides.
void AnchoredTagInALineOfNoise(benchmark::State& state) {
    Look(state, Repeated(u"noise of a receiver ", state.range(0)), u"^[BLob");
}
BENCHMARK(AnchoredTagInALineOfNoise)->Arg(80)->Arg(8000);

// Lines of a record without the tag that is searched for.
void TagThatIsNotThere(benchmark::State& state) {
    Look(state, Repeated(u"[RESULT_VALUE \"23.4\"]\r", state.range(0)), u"[CONNECT");
}
BENCHMARK(TagThatIsNotThere)->Arg(400)->Arg(40000);

// A value between quotes that is as long as the line.
void QuotedText(benchmark::State& state) {
    Look(state, u"[RESULT_VALUE \"" + Repeated(u"23.4 ", state.range(0)) + u"\"]", u"\".+\"");
}
BENCHMARK(QuotedText)->Arg(40)->Arg(4000);

// The last variable of a list, after which there is no bar.
void VariableOfAList(benchmark::State& state) {
    Look(state, Repeated(u"|Site=12", state.range(0)), u"=.+|");
}
BENCHMARK(VariableOfAList)->Arg(80)->Arg(8000);

// The name of a variable that is a hard case for the matcher.
void HostileName(benchmark::State& state) {
    Look(state, Repeated(u"abcab=", state.range(0)), u".+b+.+b+.+b+.+b+.+b+.+b+x=");
}
BENCHMARK(HostileName)->Arg(80)->Arg(8000);

// Each line end of a text of lines of 22 characters.
void LineEndsReplaced(benchmark::State& state) {
    const Text lines = Repeated(u"[RESULT_VALUE \"23\"]\r\n", state.range(0));
    for (auto _ : state) {
        Text text = lines;
        ReplacePattern(text, u"\r\n", u"\r", true, false);
        benchmark::DoNotOptimize(text.data());
    }
}
BENCHMARK(LineEndsReplaced)->Arg(400)->Arg(40000);

// The last field of a row of short fields; the whole row is counted.
void TokenOfARow(benchmark::State& state) {
    const Text row = Repeated(u"12.5|", state.range(0));
    Text token;
    for (auto _ : state)
        benchmark::DoNotOptimize(GetToken(row, u"|", static_cast<std::int32_t>(row.size() / 5), token));
}
BENCHMARK(TokenOfARow)->Arg(100)->Arg(10000);

// A line of a file to text and back; in ASCII, and with one letter in ten beyond ASCII.
void LineToTextAndBack(benchmark::State& state, const std::string& piece) {
    std::string line;
    while (line.size() < static_cast<std::size_t>(state.range(0)))
        line += piece;
    for (auto _ : state)
        benchmark::DoNotOptimize(ToBytes(FromBytes(line)));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(line.size()));
}
BENCHMARK_CAPTURE(LineToTextAndBack, Ascii, std::string("12.5|Site 3"))->Arg(120)->Arg(12000);
BENCHMARK_CAPTURE(LineToTextAndBack, Umlauts, std::string("gr\xC3\xBCn|12.5|"))->Arg(120)->Arg(12000);

} // namespace
