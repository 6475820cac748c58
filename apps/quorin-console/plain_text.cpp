// SPDX-License-Identifier: MIT
#include "apps/quorin-console/plain_text.h"

#include <sstream>

namespace console {

namespace {

using Json = nlohmann::ordered_json;

std::string Indented(const std::string& text) {
    std::istringstream in(text);
    std::string indented;
    for (std::string line; std::getline(in, line);)
        indented += line.empty() || line == "\r" ? "\n" : "    " + line + "\n";
    return indented;
}

std::string EventText(const Json& event) {
    const std::string kind = event.at("event");
    const std::string text = event.value("text", Json()).is_string() ? event.at("text").get<std::string>() : "";
    if (kind == "box")
        return Indented("asked: " + text);
    if (kind == "reading")
        return Indented("reading " + event.at("verdict").get<std::string>() + ": " +
                        event.at("value").get<std::string>() + " " + event.at("unit").get<std::string>());
    if (kind == "saved")
        return Indented("saved: row " + event.at("row").dump() + " of " + event.at("file").get<std::string>());
    if (kind == "station")
        return Indented("station " + event.at("state").get<std::string>() + ": " + text);
    return kind == "warning" ? Indented("warning: " + text) : "";
}

std::string DoneText(const Json& done) {
    const std::string word = done.at("done");
    return done.contains("error") ? Indented(word + ": " + done.at("error").get<std::string>()) : "";
}

std::string DraftText(const Json& object) {
    const Json& draft = object.at("draft");
    std::string text = "not saved: " + draft.at("file").get<std::string>() + ", record " + draft.at("row").dump() +
                       ", " + draft.at("time").get<std::string>() + "\n";
    for (const Json& field : draft.at("fields")) {
        const std::string shown = field.at("text");
        const std::string saved = field.at("saved");
        text += "  " + field.at("field").get<std::string>() + ": " + shown +
                (shown == saved ? "" : " (saved before: \"" + saved + "\")") + "\n";
    }
    if (object.value("put", false))
        text += "put back\n";
    if (object.contains("forgotten"))
        text += "forgotten\n";
    if (object.contains("error"))
        text += "can't be put back: " + object.at("error").get<std::string>() + "\n";
    return Indented(text);
}

} // namespace

std::string PlainText(const nlohmann::ordered_json& object) {
    if (object.contains("say"))
        return "\n== " + object.at("say").get<std::string>() + "\n";
    if (object.contains("show"))
        return "\n" + Indented(object.at("show"));
    if (object.contains("draft"))
        return DraftText(object);
    if (object.contains("event"))
        return EventText(object);
    if (object.contains("done"))
        return DoneText(object);
    return object.contains("ready") ? "" : object.dump() + "\n";
}

} // namespace console
