// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/ask.h"

#include "apps/quorin-instrument/waiting.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <optional>
#include <ostream>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace instrument {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int LongestEvery = 86400; // seconds

std::string Lowered(std::string_view text) {
    std::string lower;
    for (const char c : text) {
        lower += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return lower;
}

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::optional<int> NumberIn(std::string_view text) {
    int number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc() && read.ptr == text.data() + text.size() && number >= 0 ? std::optional(number)
                                                                                          : std::nullopt;
}

/// Lines that come over a descriptor.
class Lines {
public:
    explicit Lines(int input) : Input_(input) {}

    /// Returns the next line, or nothing if none has come within LookInterval.
    std::optional<std::string> Next() {
        pollfd input = {Input_, POLLIN, 0};
        if (Text_.find('\n') == std::string::npos && !HasEnded_ &&
            poll(&input, 1, static_cast<int>(LookInterval.count() / 1000)) > 0) {
            Read();
        }
        const auto end = Text_.find('\n');
        if (end == std::string::npos && (!HasEnded_ || Text_.empty())) {
            return std::nullopt;
        }
        const std::string line = Text_.substr(0, end);
        Text_.erase(0, end == std::string::npos ? end : end + 1);
        return line;
    }
    bool HaveEnded() const { return HasEnded_ && Text_.empty(); }

private:
    void Read() {
        std::array<char, 256> part;
        const auto got = read(Input_, part.data(), part.size());
        if (got > 0) {
            Text_.append(part.data(), static_cast<std::size_t>(got));
        } else if (got == 0 || (errno != EINTR && errno != EAGAIN)) {
            HasEnded_ = true;
        }
    }

    int Input_;
    std::string Text_;
    bool HasEnded_ = false;
};

class Asked {
public:
    Asked(MadeToOrder& results, const PlayOptions& options, Outlet& outlet, std::ostream& told)
        : Results_(results), Options_(options), Outlet_(outlet), Told_(told) {}

    void ShowKeys() {
        for (std::size_t kind = 0; kind < Results_.Names().size(); ++kind) {
            Told_ << kind + 1 << "  " << Results_.Names()[kind] << '\n';
        }
        Told_ << "all, stranger, unplug, plug, every N (seconds; 0: no more), quit" << std::endl;
    }

    Outcome Run(const Order& order) {
        switch (order.What) {
        case Order::Kind::One:
            return Send(Results_.Names()[order.ResultKind], Results_.One(order.ResultKind));
        case Order::Kind::All:
            return Send("one of each", Results_.All());
        case Order::Kind::Stranger:
            return Send("a stranger's reading", Results_.OfAStranger());
        case Order::Kind::Unplug:
            return Unplug();
        case Order::Kind::Plug:
            return Plug();
        case Order::Kind::Every:
            Every_ = order.Every;
            Due_ = Clock::now() + Every_;
            return Outcome::Done;
        case Order::Kind::Unknown:
            ShowKeys();
            return Outcome::Done;
        case Order::Kind::None:
        case Order::Kind::Quit:
            break;
        }
        return Outcome::Done;
    }

    Outcome SendIfDue() {
        if (Every_.count() == 0 || Clock::now() < Due_) {
            return Outcome::Done;
        }
        Due_ = Clock::now() + Every_;
        return Send("a result", Results_.Next());
    }

private:
    Outcome Send(const std::string& what, const std::string& bytes) {
        if (!IsPlugged_ || !Outlet_.IsHeard()) {
            Told_ << (IsPlugged_ ? "nobody listens" : "unplugged") << ": nothing was sent" << std::endl;
            return Outcome::Done;
        }
        const Outcome sent = Play(Recording(bytes), Options_, Outlet_, PauseFor);
        if (sent == Outcome::Done) {
            Told_ << what << " sent" << std::endl;
        }
        return sent;
    }

    Outcome Unplug() {
        if (IsPlugged_ && !Outlet_.Unplug()) {
            Told_ << "only a pseudo terminal can be unplugged" << std::endl;
            return Outcome::Done;
        }
        IsPlugged_ = false;
        Told_ << "unplugged" << std::endl;
        return Outcome::Done;
    }

    Outcome Plug() {
        const Outcome plugged = IsPlugged_ ? Outcome::Done : Outlet_.Open();
        if (plugged == Outcome::Done) {
            IsPlugged_ = true;
            Told_ << "plugged in" << std::endl;
        }
        return plugged;
    }

    MadeToOrder& Results_;
    const PlayOptions& Options_;
    Outlet& Outlet_;
    std::ostream& Told_;
    bool IsPlugged_ = true;
    std::chrono::seconds Every_{0};
    Clock::time_point Due_;
};

} // namespace

Order ReadOrder(std::string_view line, const std::vector<std::string>& kinds) {
    const std::string text = Lowered(Trimmed(line));
    const auto number = NumberIn(text);
    for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
        if (text == Lowered(kinds[kind]) || (number && *number == static_cast<int>(kind) + 1)) {
            return {.What = Order::Kind::One, .ResultKind = kind};
        }
    }
    if (text.rfind("every ", 0) == 0) {
        const auto seconds = NumberIn(Trimmed(std::string_view(text).substr(6)));
        return seconds && *seconds <= LongestEvery
                   ? Order{.What = Order::Kind::Every, .Every = std::chrono::seconds(*seconds)}
                   : Order{.What = Order::Kind::Unknown};
    }
    constexpr std::pair<std::string_view, Order::Kind> Words[] = {
        {"", Order::Kind::None},         {"all", Order::Kind::All},   {"stranger", Order::Kind::Stranger},
        {"unplug", Order::Kind::Unplug}, {"plug", Order::Kind::Plug}, {"quit", Order::Kind::Quit}};
    for (const auto& [word, what] : Words) {
        if (text == word) {
            return {.What = what};
        }
    }
    return {.What = Order::Kind::Unknown};
}

Outcome Ask(MadeToOrder& results, const PlayOptions& options, Outlet& outlet, int input, std::ostream& told) {
    Asked asked(results, options, outlet, told);
    Lines lines(input);
    asked.ShowKeys();
    while (!StopAsked()) {
        Order order;
        if (const auto line = lines.Next()) {
            order = ReadOrder(*line, results.Names());
        } else if (lines.HaveEnded()) {
            return Outcome::Done;
        }
        if (order.What == Order::Kind::Quit) {
            return Outcome::Done;
        }
        if (const Outcome done = asked.Run(order); done != Outcome::Done) {
            return done;
        }
        if (const Outcome sent = asked.SendIfDue(); sent != Outcome::Done) {
            return sent;
        }
    }
    return Outcome::Stopped;
}

} // namespace instrument
