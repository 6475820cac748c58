// SPDX-License-Identifier: MIT
#include "companion/question_rush.h"

namespace companion {

namespace {

constexpr std::size_t Many = 3;
constexpr auto Span = std::chrono::seconds(10);

Text FirstLine(const Text& message) {
    return message.substr(0, message.find(u'\r'));
}

} // namespace

bool QuestionRush::Comes(const Text& message, Moment now) {
    if (const Text kind = FirstLine(message); kind != Kind_) {
        Kind_ = kind;
        Last_.clear();
    }
    Last_.push_back(now);
    if (Last_.size() > Many)
        Last_.pop_front();
    return Last_.size() == Many && now - Last_.front() <= Span;
}

} // namespace companion
