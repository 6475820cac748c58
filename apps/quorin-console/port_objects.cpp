// SPDX-License-Identifier: MIT
#include "apps/quorin-console/port_objects.h"

#include "src/text/printable.h"

namespace console {

using modStringTools::Printable; // a file name may hold bytes that are no UTF-8

namespace {

void PutKnown(Json& object, const char* name, const std::string& value) {
    if (!value.empty())
        object[name] = Printable(value);
}

/// One word for each state, for programs.
const char* StateName(companion::PortState state) {
    switch (state) {
    case companion::PortState::Ready:
        return "ready";
    case companion::PortState::Ours:
        return "open";
    case companion::PortState::Untried:
        return "untried";
    case companion::PortState::InUse:
        return "inuse";
    case companion::PortState::Refused:
        return "refused";
    case companion::PortState::Gone:
        return "gone";
    case companion::PortState::Failing:
        return "failing";
    case companion::PortState::Elsewhere:
        return "elsewhere";
    }
    return "";
}

} // namespace

Json PortObject(const companion::PortRow& row) {
    Json object;
    object["port"] = Printable(row.Path);
    object["state"] = StateName(row.State);
    object["names"] = Json::array();
    object["pinned"] = Json::array();
    for (const companion::PortName& name : row.Numbers)
        object[name.Pinned ? "pinned" : "names"].push_back("Com" + std::to_string(name.Number));
    object["links"] = Json::array();
    for (const std::string& link : row.Links)
        object["links"].push_back(Printable(link));
    PutKnown(object, "vendor", row.Name.Vendor);
    PutKnown(object, "model", row.Name.Model);
    PutKnown(object, "serial", row.Name.SerialNumber);
    PutKnown(object, "reason", row.Trouble.Reason);
    PutKnown(object, "remedy", row.Trouble.Remedy);
    PutKnown(object, "command", row.Trouble.Command);
    return object;
}

} // namespace console
