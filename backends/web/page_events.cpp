// SPDX-License-Identifier: MIT
#include "backends/web/page_events.h"

#include <nlohmann/json.hpp>

#include <array>
#include <limits>
#include <unistd.h>
#include <utility>

namespace backends::web {

namespace {

using Json = nlohmann::json;

std::int64_t Whole(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found != object.end() && found->is_number_integer() ? found->get<std::int64_t>() : 0;
}

/// A number that no control can have counts as 0.
std::int32_t Number(const Json& object, const char* name) {
    const std::int64_t number = Whole(object, name);
    const bool fits =
        number >= std::numeric_limits<std::int32_t>::min() && number <= std::numeric_limits<std::int32_t>::max();
    return fits ? static_cast<std::int32_t>(number) : 0;
}

bool IsTrue(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found != object.end() && found->is_boolean() && found->get<bool>();
}

std::string Bytes(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

/// Returns the text that was typed. One with bytes that are no UTF-8 comes as the numbers of its units.
Text TextOf(const Json& object) {
    const auto units = object.find("units");
    if (units == object.end() || !units->is_array())
        return modStringTools::FromBytes(Bytes(object, "words"));
    Text text;
    for (const Json& unit : *units)
        if (unit.is_number_unsigned())
            text += static_cast<char16_t>(unit.get<std::uint16_t>());
    return text;
}

std::vector<std::string> NamesOf(const Json& object) {
    const auto found = object.find("names");
    std::vector<std::string> names;
    if (found == object.end() || !found->is_array())
        return names;
    for (const Json& name : *found)
        names.push_back(name.is_string() ? name.get<std::string>() : std::string());
    return names;
}

} // namespace

std::optional<PageEvent> ReadPageEvent(const std::string& line) {
    const Json read = Json::parse(line, nullptr, false);
    if (!read.is_object() || Bytes(read, "kind").empty())
        return std::nullopt;
    PageEvent event{.Kind = Bytes(read, "kind"),
                    .Serial = Whole(read, "serial"),
                    .Stage = Number(read, "stage"),
                    .Field = Number(read, "field"),
                    .Box = Number(read, "box"),
                    .X = Number(read, "x"),
                    .Y = Number(read, "y"),
                    .Width = Number(read, "width"),
                    .Height = Number(read, "height"),
                    .Key = Number(read, "key"),
                    .Repeated = IsTrue(read, "repeated"),
                    .Menu = Number(read, "menu"),
                    .Item = Number(read, "item"),
                    .Row = Number(read, "row"),
                    .Caret = Number(read, "caret"),
                    .Selected = Number(read, "selected"),
                    .Words = TextOf(read),
                    .Data = Bytes(read, "data"),
                    .Bytes = Whole(read, "bytes"),
                    .Yes = IsTrue(read, "yes"),
                    .Names = NamesOf(read)};
    modStringTools::BlankNuls(event.Words);
    return event;
}

void PageEvents::Read() {
    std::array<char, 4096> block;
    for (ssize_t count; (count = ::read(Descriptor_, block.data(), block.size())) > 0;)
        Begun_.append(block.data(), static_cast<std::size_t>(count));
    for (std::size_t end; (end = Begun_.find('\n')) != std::string::npos; Begun_.erase(0, end + 1)) {
        if (auto event = ReadPageEvent(Begun_.substr(0, end)))
            Waiting_.push_back(std::move(*event));
    }
}

bool PageEvents::RaiseWhatIsPending() {
    Read();
    if (Waiting_.empty())
        return false;
    const PageEvent event = std::move(Waiting_.front());
    Waiting_.pop_front();
    if (Raised)
        Raised(event);
    return true;
}

} // namespace backends::web
