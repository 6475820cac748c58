// SPDX-License-Identifier: MIT
#include "backends/linux/port_list.h"

#include "backends/files/folder_names.h"
#include "backends/files/host_files.h"
#include "backends/linux/port_names.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace backends {

using companion::PortName;
using companion::PortRow;
using companion::PortState;
using companion::PortTrouble;

namespace {

/// A device while the list is built.
struct Found {
    PortRow Row;
    std::string Canonical; ///< empty if its path leads to nothing
};

class Survey {
public:
    explicit Survey(const PortSurvey& where) : Where_(where) {}
    std::vector<PortRow> Rows();

private:
    void AddAll(const std::vector<std::string>& paths);
    void AddBoardPorts();
    void AddLinks();
    void AddPins();
    void AddRuleNumbers();
    void Judge(Found& found, const std::map<std::string, PortHolder>& holders) const;
    std::optional<PortHolder> Holder(const Found& found, const std::map<std::string, PortHolder>& holders) const;
    Found& RowOf(const std::string& path);

    const PortSurvey& Where_;
    std::vector<Found> List_;
};

void Give(Found& found, PortState state, const PortTrouble& trouble) {
    found.Row.State = state;
    found.Row.Trouble = trouble;
}

/// Returns the device that a path leads to, under whatever name it is listed; a path that leads to nothing is a
/// separate device.
Found& Survey::RowOf(const std::string& path) {
    std::string canonical;
    Canonical(path, canonical);
    const auto known = std::find_if(List_.begin(), List_.end(), [&](const Found& found) {
        return canonical.empty() ? found.Row.Path == path : found.Canonical == canonical;
    });
    if (known != List_.end())
        return *known;
    List_.emplace_back();
    List_.back().Row.Path = path;
    List_.back().Canonical = canonical;
    return List_.back();
}

void Survey::AddAll(const std::vector<std::string>& paths) {
    for (const std::string& path : paths)
        RowOf(path);
}

void Survey::AddBoardPorts() {
    AddAll(BoardPorts(Where_.DeviceFolder, Where_.SystemFolder));
}

void Survey::AddLinks() {
    const std::string folder = Where_.DeviceFolder + "/serial/by-id";
    for (const std::string& name : NamesIn(folder)) {
        const std::string link = folder + "/" + name;
        Found& found = RowOf(link);
        if (found.Row.Path != link)
            found.Row.Links.push_back(link);
    }
}

void Survey::AddPins() {
    for (const auto& [number, address] : Where_.Pinned) {
        Found& found = RowOf(AddressText(address));
        found.Row.Numbers.push_back({number, true});
        if (address.Kind != AddressKind::Path)
            found.Row.State = PortState::Elsewhere;
    }
}

void Survey::AddRuleNumbers() {
    for (std::int32_t number = 1; number <= LastPortNumber; ++number) {
        const std::string path = PortPath(number, Where_.DeviceFolder);
        if (path.empty() || Where_.Pinned.count(number) != 0)
            continue;
        std::string canonical;
        Canonical(path, canonical);
        for (Found& found : List_)
            if (!canonical.empty() && found.Canonical == canonical)
                found.Row.Numbers.push_back({number, false});
    }
}

std::optional<PortHolder> Survey::Holder(const Found& found, const std::map<std::string, PortHolder>& holders) const {
    const auto holder = holders.find(found.Canonical);
    if (holder != holders.end())
        return holder->second;
    if (const auto byName = HolderByLock(NameOf(found.Row.Path), Where_.LockFolder, Where_.ProcessFolder))
        return byName;
    return HolderByLock(NameOf(found.Canonical), Where_.LockFolder, Where_.ProcessFolder);
}

void Survey::Judge(Found& found, const std::map<std::string, PortHolder>& holders) const {
    const std::string& path = found.Row.Path;
    if (found.Row.State == PortState::Elsewhere)
        return;
    std::string own;
    Canonical(Where_.Own, own);
    if (!own.empty() && own == found.Canonical)
        return Give(found, PortState::Ours, {});
    if (found.Canonical.empty())
        return Give(found, PortState::Gone, OpeningFailed(path, ENOENT));
    if (!IsCharacterDevice(path))
        return Give(found, PortState::Failing, OpeningFailed(path, ENOTTY));
    if (const auto holder = Holder(found, holders))
        return Give(found, PortState::InUse, HeldBy(path, *holder));
    const PortTrial trial = IsBoardPort(path) ? PortTrial::LookOnly : PortTrial::Open;
    switch (const int code = Where_.Try(path, trial)) {
    case 0:
        return Give(found, trial == PortTrial::Open ? PortState::Ready : PortState::Untried, {});
    case EACCES:
    case EPERM:
        return Give(found, PortState::Refused, NoPermission(path, Where_.Rights(path)));
    case EBUSY:
        return Give(found, PortState::InUse, OpeningFailed(path, code));
    case ENOENT:
    case ENODEV:
    case ENXIO:
        return Give(found, PortState::Gone, OpeningFailed(path, code));
    default:
        return Give(found, PortState::Failing, OpeningFailed(path, code));
    }
}

std::vector<PortRow> Survey::Rows() {
    AddAll(Adapters(Where_.DeviceFolder));
    AddBoardPorts();
    AddLinks();
    AddPins();
    AddRuleNumbers();
    std::vector<std::string> canonicals;
    for (const Found& found : List_)
        canonicals.push_back(found.Canonical);
    const auto holders = HoldersByProcess(canonicals, Where_.ProcessFolder);
    std::vector<PortRow> rows;
    for (Found& found : List_) {
        Judge(found, holders);
        if (found.Row.State != PortState::Elsewhere)
            found.Row.Name = Where_.Describe(found.Row.Path);
        std::stable_sort(found.Row.Numbers.begin(), found.Row.Numbers.end(),
                         [](const PortName& a, const PortName& b) { return a.Number < b.Number; });
        rows.push_back(std::move(found.Row));
    }
    return rows;
}

} // namespace

int TryPort(const std::string& path, PortTrial trial) {
    if (trial == PortTrial::LookOnly || IsBoardPort(path))
        return ::faccessat(AT_FDCWD, path.c_str(), R_OK | W_OK, AT_EACCESS) == 0 ? 0 : errno;
    const Descriptor opened(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!opened.Valid())
        return errno;
    return ::isatty(opened.Number()) != 0 ? 0 : errno;
}

std::vector<PortRow> SerialPorts(const PortSurvey& survey) {
    return Survey(survey).Rows();
}

} // namespace backends
