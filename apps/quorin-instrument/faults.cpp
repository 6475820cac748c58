// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/faults.h"

#include "apps/quorin-instrument/stream.h"

namespace instrument {

namespace {

constexpr std::string_view Stranger = "[ORIGIN \"STRANGER\"]\r\n";

template <typename Change>
std::string ChangeLines(std::string_view record, Change change) {
    std::string changed;
    for (const std::string_view line : LinesOf(record)) {
        changed += change(line);
    }
    return changed;
}

std::string FromAStranger(std::string_view record) {
    return ChangeLines(record, [](std::string_view line) { return BeginsWithTag(line, "[ORIGIN") ? Stranger : line; });
}

std::string WithoutEndTag(std::string_view record) {
    return ChangeLines(record,
                       [](std::string_view line) { return BeginsWithTag(line, "[/BLob") ? std::string_view() : line; });
}

std::string WithoutALine(std::string_view record, std::mt19937& engine) {
    const auto lines = LinesOf(record);
    if (lines.size() < 3) {
        return std::string(record);
    }
    const std::string_view lost = lines[1 + engine() % (lines.size() - 2)];
    return ChangeLines(
        record, [lost](std::string_view line) { return line.data() == lost.data() ? std::string_view() : line; });
}

char RubbishCharacter(std::mt19937& engine) {
    while (true) {
        const auto byte = static_cast<unsigned char>(' ' + engine() % (256 - ' '));
        if (byte != '[' && byte != ']' && byte != 127) {
            return static_cast<char>(byte);
        }
    }
}

} // namespace

bool FallsOn(int every, std::int64_t number) {
    return every > 0 && number % every == 0;
}

std::string Misbehave(std::string_view record, std::int64_t number, const FaultPlan& plan, std::mt19937& engine) {
    std::string sent(record);
    if (FallsOn(plan.WrongOrigin, number)) {
        sent = FromAStranger(sent);
    }
    if (FallsOn(plan.DropLine, number)) {
        sent = WithoutALine(sent, engine);
    }
    if (FallsOn(plan.LoseEndTag, number)) {
        sent = WithoutEndTag(sent);
    }
    if (FallsOn(plan.Noise, number)) {
        sent.insert(0, RubbishLines(engine));
    }
    return sent;
}

std::string RubbishLines(std::mt19937& engine) {
    std::string rubbish;
    for (auto lines = 1 + engine() % 3; lines > 0; --lines) {
        for (auto length = 1 + engine() % 40; length > 0; --length) {
            rubbish += RubbishCharacter(engine);
        }
        rubbish += "\r\n";
    }
    return rubbish;
}

} // namespace instrument
