// SPDX-License-Identifier: MIT
#include "plotting/axes.h"

#include "companion/values/number_text.h"
#include "companion/values/quantity.h"
#include "plotting/moments_of_rows.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace plotting {

using values::ExponentOf;

namespace {

constexpr double HugeNumber = 1e300; // the distance of two such numbers may be none that a double can be

/// Returns the label of a tick on an axis with this step and this largest value.
std::string LabelOf(double value, double step, double largest) {
    const int ofStep = ExponentOf(step), ofLargest = ExponentOf(largest);
    constexpr int MostDigits = 7, MostDecimals = 5;
    if (value == 0)
        return "0";
    if (ofLargest < MostDigits && ofStep >= -MostDecimals)
        return values::FixedText(value, std::max(0, -ofStep));
    const int digits = std::clamp(ExponentOf(value) - ofStep, 0, 16);
    return values::ScientificText(value, digits);
}

/// Its label is exact: it stands where the label says.
Tick MiddleTick(double low, double high) {
    const double middle = low / 2 + high / 2;
    const std::string label = values::RoundedText(middle, ExponentOf(high / 2 - low / 2) - 1);
    return {.At = values::ValueOf(label).value_or(middle), .Label = label};
}

std::string TwoDigits(unsigned number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::chrono::year_month_day DateOf(double seconds) {
    using namespace std::chrono;
    return sys_days(days(static_cast<int>(std::floor(seconds / SecondsADay))));
}

std::string DayText(double seconds) {
    const auto date = DateOf(seconds);
    return std::to_string(static_cast<int>(date.year())) + "-" + TwoDigits(static_cast<unsigned>(date.month())) + "-" +
           TwoDigits(static_cast<unsigned>(date.day()));
}

std::string ClockText(double seconds, bool hasSeconds) {
    const auto ofDay = static_cast<unsigned>(seconds - std::floor(seconds / SecondsADay) * SecondsADay);
    const std::string minutes = TwoDigits(ofDay / 3600) + ":" + TwoDigits(ofDay / 60 % 60);
    return hasSeconds ? minutes + ":" + TwoDigits(ofDay % 60) : minutes;
}

/// Steps of a clock and a calendar, in seconds.
constexpr std::array<double, 20> ClockSteps = {1,     2,     5,     10,    15,          30,         60,
                                               120,   300,   600,   900,   1800,        3600,       7200,
                                               10800, 21600, 43200, 86400, 2 * 86400.0, 7 * 86400.0};
constexpr std::array<int, 4> MonthSteps = {1, 2, 3, 6};

std::vector<Tick> ClockTicks(double low, double high, double step, bool hasDate) {
    std::vector<Tick> ticks;
    double lastDay = -1;
    for (double at = std::ceil(low / step) * step; at <= high; at += step) {
        const double day = std::floor(at / SecondsADay);
        Tick tick{.At = at, .Label = ClockText(at, step < 60), .Below = {}};
        if (step >= SecondsADay)
            tick.Label = hasDate ? DayText(at) : "day " + std::to_string(static_cast<int>(day) + 1);
        else if (hasDate && (ticks.empty() || day != lastDay))
            tick.Below = DayText(at);
        else if (!hasDate && day > 0 && day != lastDay)
            tick.Below = "day " + std::to_string(static_cast<int>(day) + 1);
        lastDay = day;
        ticks.push_back(tick);
    }
    return ticks;
}

std::vector<Tick> MonthTicks(double low, double high, int step) {
    using namespace std::chrono;
    std::vector<Tick> ticks;
    const auto first = DateOf(low);
    int month = static_cast<int>(first.year()) * 12 + static_cast<int>(static_cast<unsigned>(first.month())) - 1;
    for (month -= month % step;; month += step) {
        const year_month_day date(year(month / 12), std::chrono::month(static_cast<unsigned>(month % 12) + 1), day(1));
        const double at = static_cast<double>(sys_days(date).time_since_epoch().count()) * SecondsADay;
        if (at > high || month / 12 > 30000)
            return ticks;
        const std::string years = std::to_string(month / 12);
        if (at >= low)
            ticks.push_back({.At = at, .Label = step % 12 == 0 ? years : DayText(at).substr(0, years.size() + 3)});
    }
}

} // namespace

double Axis::Share(double value) const {
    const double scale = std::max(std::fabs(Low), std::fabs(High)) > HugeNumber ? 0.125 : 1;
    return (value * scale - Low * scale) / (High * scale - Low * scale);
}

bool Axis::HasSecondRow() const {
    return std::any_of(Ticks.begin(), Ticks.end(), [](const Tick& tick) { return !tick.Below.empty(); });
}

double RoundStep(double atLeast) {
    const int exponent = static_cast<int>(std::floor(std::log10(atLeast)));
    const double power = std::pow(10.0, exponent);
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= atLeast * (1 - 1e-9))
            return factor * power;
    return std::pow(10.0, exponent + 1);
}

std::vector<Tick> NumberTicks(double low, double high, int most, bool isWhole) {
    double step = RoundStep(std::max(high / most - low / most, 1e-307));
    if (isWhole)
        step = std::max(step, 1.0);
    std::vector<Tick> ticks;
    for (;;) {
        const double first = std::ceil(low / step - 1e-9), last = std::floor(high / step + 1e-9);
        if (last - first + 1 > most) { // the ends may be ticks themselves
            step = RoundStep(step * 1.5);
            continue;
        }
        const double largest = std::max(std::fabs(low), std::fabs(high));
        for (double i = first; i <= last; ++i)
            ticks.push_back({.At = i * step, .Label = LabelOf(i * step, step, largest)});
        if (ticks.empty()) // no round number between them
            ticks.push_back(MiddleTick(low, high));
        return ticks;
    }
}

std::vector<Tick> TimeTicks(double low, double high, int most, bool hasDate) {
    const double least = (high - low) / most;
    for (const double step : ClockSteps)
        if (step > least)
            if (auto ticks = ClockTicks(low, high, step, hasDate); !ticks.empty())
                return ticks;
    constexpr double Month = 30.4 * SecondsADay;
    if (!hasDate)
        return ClockTicks(low, high, RoundStep(least / SecondsADay) * SecondsADay, false);
    for (const int months : MonthSteps)
        if (months * Month > least)
            if (auto ticks = MonthTicks(low, high, months); !ticks.empty())
                return ticks;
    return MonthTicks(low, high, 12 * static_cast<int>(std::max(1.0, RoundStep(least / (12 * Month)))));
}

void Widen(double& low, double& high, double share) {
    constexpr double Largest = 1.7e308;
    double more = (high / 2 - low / 2) * 2 * share;
    const double magnitude = std::max(std::fabs(low), std::fabs(high));
    if (high / 2 - low / 2 <= std::max(magnitude * 1e-14, 1e-305)) // a range that a double can't divide
        more = magnitude < 1e-300 ? 1 : magnitude / 10;
    low = std::max(low - more, -Largest);
    high = std::min(high + more, Largest);
}

} // namespace plotting
