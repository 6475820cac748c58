// SPDX-License-Identifier: MIT
#include "backends/linux/port_troubles.h"

#include "backends/files/folder_names.h"
#include "backends/files/host_files.h"
#include "backends/linux/port_names.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace backends {

using companion::PortTrouble;

namespace {

constexpr mode_t GroupReadsAndWrites = 060;

/// The group to which serial ports usually belong on Linux.
constexpr const char* UsualGroup = "dialout";

/// Services that open serial devices without being configured for them.
struct KnownService {
    const char* Program;
    const char* Remedy;
    const char* Command; ///< ends the remedy; `%` is replaced by the device's name
};

constexpr std::array<KnownService, 5> KnownServices = {{
    {"ModemManager", "It looks for modems; stop it by: ", "sudo systemctl disable --now ModemManager"},
    {"brltty", "It looks for Braille displays; where there is none, remove it by: ", "sudo apt remove brltty"},
    {"gpsd", "It looks for satellite receivers; stop it by: ", "sudo systemctl disable --now gpsd.socket gpsd.service"},
    {"agetty", "It offers a login on the line; stop it by: ", "sudo systemctl disable --now serial-getty@%.service"},
    {"login",
     "Somebody is logged in on the line; stop that by: ", "sudo systemctl disable --now serial-getty@%.service"},
}};

std::string Filled(const std::string& text, const std::string& name) {
    const std::size_t place = text.find('%');
    return place == std::string::npos ? text : text.substr(0, place) + name + text.substr(place + 1);
}

/// The remedy is `before`, the command and `after`.
PortTrouble WithCommand(std::string reason, const std::string& before, const std::string& command,
                        const std::string& after = {}) {
    return {std::move(reason), before + command + after, command};
}

std::string Described(const PortHolder& holder) {
    const std::string program = holder.Program.empty() ? "Another program" : holder.Program;
    return holder.Process.empty() ? program : program + " (process " + holder.Process + ")";
}

std::string OwnerName(uid_t owner) {
    const passwd* found = ::getpwuid(owner);
    return found == nullptr ? std::to_string(owner) : found->pw_name;
}

bool Lists(const group& list, const std::string& user) {
    for (char** member = list.gr_mem; *member != nullptr; ++member)
        if (user == *member)
            return true;
    return false;
}

bool ProcessHas(gid_t wanted) {
    const int count = ::getgroups(0, nullptr);
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(count, 0)));
    if (count < 0 || ::getgroups(count, groups.data()) < 0)
        groups.clear();
    return ::getegid() == wanted || std::find(groups.begin(), groups.end(), wanted) != groups.end();
}

bool IsNoHardware(const std::string& path) {
    const std::string name = NameOf(path);
    return !NumberAfter("ttyS", name).empty() && FirstLine("/sys/class/tty/" + name + "/type") == "0";
}

std::string NotAvailableLine(const std::string& path) {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0)
        return path + " is not there";
    if (!S_ISCHR(found.st_mode))
        return path + " is not a serial port";
    return IsNoHardware(path) ? "there is no hardware behind " + path : path + " is busy";
}

std::string NoPermissionLine(const std::string& path) {
    const PortRights rights = RightsOf(path);
    const std::string line = "no permission for " + path;
    return rights.Group.empty() || !rights.GroupMayOpen ? line : line + " (group " + rights.Group + ")";
}

} // namespace

PortRights RightsOf(const std::string& path) {
    PortRights rights;
    rights.User = OwnerName(::geteuid());
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0)
        return rights;
    rights.Owner = OwnerName(found.st_uid);
    rights.GroupMayOpen = (found.st_mode & GroupReadsAndWrites) == GroupReadsAndWrites;
    const group* list = ::getgrgid(found.st_gid);
    rights.Group = list == nullptr ? std::to_string(found.st_gid) : list->gr_name;
    if (ProcessHas(found.st_gid))
        rights.OfGroup = Membership::Now;
    else if (list != nullptr && Lists(*list, rights.User))
        rights.OfGroup = Membership::FromNextLogin;
    return rights;
}

PortTrouble NoPermission(const std::string& path, const PortRights& rights) {
    // Never advise a user to join the group root.
    if (!rights.GroupMayOpen || rights.Group == "root")
        return WithCommand("Only its owner " + rights.Owner + " may open it.", "Until it is unplugged this helps: ",
                           "sudo chgrp " + std::string(UsualGroup) + " " + path + " && sudo chmod g+rw " + path);
    if (rights.OfGroup == Membership::Now)
        return {"An access rule of this machine does not allow it to " + rights.User + ".",
                "Ask the administrator of this machine."};
    if (rights.OfGroup == Membership::FromNextLogin)
        return {"Your login began before you came into the group " + rights.Group + ", which may open it.",
                "Log out and in again."};
    return WithCommand("You are not in the group " + rights.Group + ", which may open it.",
                       "Join it with: ", "sudo usermod -aG " + rights.Group + " " + rights.User,
                       " and log out and in again.");
}

PortTrouble HeldBy(const std::string& path, const PortHolder& holder) {
    const auto service = std::find_if(KnownServices.begin(), KnownServices.end(),
                                      [&holder](const KnownService& known) { return holder.Program == known.Program; });
    if (service != KnownServices.end())
        return WithCommand("The service " + Described(holder) + " has taken it.", service->Remedy,
                           Filled(service->Command, NameOf(path)));
    if (holder.Process.empty())
        return {Described(holder) + " uses it, as the lock file " + holder.LockFile + " says.",
                "End that program; if there is none, remove the lock file."};
    return {Described(holder) + " uses it.", "End that program."};
}

PortTrouble OpeningFailed(const std::string& path, int code) {
    switch (code) {
    case EBUSY:
        return WithCommand("Another program uses it, and only root can see which.",
                           "End that program; this names it: ", "sudo fuser -v " + path);
    case ENOENT:
        return {"It is not there.", "Plug the adapter in, or check the name."};
    case ENODEV:
    case ENXIO:
        return {"The device behind it is gone.", "Unplug the adapter and plug it in again."};
    case ENOTTY:
        return {"It is not a serial port.", "Name the path of a serial port."};
    default:
        return {"Opening it fails: " + ReasonOf(code) + ".",
                "Unplug the adapter and plug it in again; sudo dmesg shows what the system reports."};
    }
}

std::string OpeningTrouble(const std::string& path, platform::ErrorNumber error) {
    if (error == NoError)
        return {};
    if (path.empty())
        return "there is no device for this port";
    switch (error) {
    case FileNotFound:
        return path + " is not there";
    case NotAvailable:
        return NotAvailableLine(path);
    case PermissionDenied:
        return NoPermissionLine(path);
    default:
        return path + ": " + modStringTools::ToBytes(ErrorText(error));
    }
}

} // namespace backends
