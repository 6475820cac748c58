// SPDX-License-Identifier: MIT
#include "tests/system/power_loss/disk_steps.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace disk {

namespace {

using FileKey = std::pair<dev_t, ino_t>;

struct Watching {
    bool On = false;
    std::string Root;
    Plan Planned;
    std::vector<Call> Kinds;
    int Reads = 0;
    int Looks = 0;
    int Names = 0;
    bool Struck = false;
    std::string StruckPath;
    bool WriteFails = false; ///< the next write fails, after a short one
    std::vector<Step> Taken;
    Start Began;
    std::map<FileKey, std::uint64_t> Numbers;
    std::uint64_t LastNumber = 0;
};
Watching Now;

std::string LinkTarget(const std::string& link) {
    std::array<char, 4096> target;
    const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
    return length > 0 ? std::string(target.data(), static_cast<std::size_t>(length)) : std::string();
}

std::string PathOf(int file) {
    return LinkTarget("/proc/self/fd/" + std::to_string(file));
}

/// Returns a path through a folder's descriptor, which SQLite gets, as a path through the folder's name.
std::string Resolved(const std::string& path) {
    const std::string descriptors = "/proc/self/fd/";
    if (path.compare(0, descriptors.size(), descriptors) != 0)
        return path;
    const std::size_t end = std::min(path.find('/', descriptors.size()), path.size());
    return LinkTarget(path.substr(0, end)) + path.substr(end);
}

/// Returns a path under the root relative to it; nothing for any other path.
std::optional<std::string> Inside(const std::string& path) {
    if (path == Now.Root)
        return std::string();
    if (path.size() <= Now.Root.size() || path.compare(0, Now.Root.size(), Now.Root) != 0 ||
        path[Now.Root.size()] != '/')
        return std::nullopt;
    return path.substr(Now.Root.size() + 1);
}

std::optional<std::string> Inside(int folder, const char* path) {
    if (!Now.On)
        return std::nullopt;
    std::string whole = path;
    if (whole.empty() || whole.front() != '/')
        whole = (folder == AT_FDCWD ? LinkTarget("/proc/self/cwd") : PathOf(folder)) + "/" + whole;
    while (whole.size() > 2 && whole.compare(whole.size() - 2, 2, "/.") == 0)
        whole.resize(whole.size() - 2);
    return Inside(Resolved(whole));
}

std::optional<std::string> Inside(int file) {
    return Now.On ? Inside(PathOf(file)) : std::nullopt;
}

std::uint64_t NumberOf(const struct stat& found) {
    std::uint64_t& number = Now.Numbers[{found.st_dev, found.st_ino}];
    if (number == 0)
        number = ++Now.LastNumber;
    return number;
}

/// Calls the library's own routine, because calls of the watch itself are not counted.
bool LookAt(int file, struct stat& found) {
    static auto* const real = Real<int(int, struct stat*)>("fstat");
    return real(file, &found) == 0;
}

bool LookAt(const std::string& path, struct stat& found) {
    static auto* const real = Real<int(const char*, struct stat*)>("lstat");
    return real((Now.Root + "/" + path).c_str(), &found) == 0;
}

std::uint64_t NumberOf(int file) {
    struct stat found {};
    return LookAt(file, found) ? NumberOf(found) : 0;
}

std::uint64_t NumberOf(const std::string& path) {
    struct stat found {};
    return LookAt(path, found) ? NumberOf(found) : 0;
}

/// Returns a new number: a new file may have the inode of a deleted one.
std::uint64_t NewNumberOf(int file) {
    struct stat found {};
    if (!LookAt(file, found))
        return 0;
    return Now.Numbers[{found.st_dev, found.st_ino}] = ++Now.LastNumber;
}

[[noreturn]] void Die() {
    ::kill(::getpid(), SIGKILL);
    for (;;)
        ::pause();
}

void Strike(const std::string& path) {
    if (!Now.Struck)
        Now.StruckPath = path;
    Now.Struck = true;
}

/// One step, from its beginning to its end.
class Attempt {
public:
    /// `takesRoom`: on a full disk only a step that needs room fails.
    Attempt(Call kind, const std::string& path, bool takesRoom) {
        Now.Kinds.push_back(kind);
        const int number = Watch::Steps();
        const Plan& plan = Now.Planned;
        if (plan.Kind != Counted::Steps || plan.What == Blow::None)
            return;
        if (number == plan.At || (plan.What == Blow::FullFromHere && number > plan.At && takesRoom)) {
            Strike(path);
            Hit_ = plan.What;
        }
        if (Hit_ == Blow::KillBefore)
            Die();
    }

    bool Fails(bool takesRoom) const {
        if (Hit_ != Blow::Fail && !(Hit_ == Blow::FullFromHere && takesRoom))
            return false;
        errno = Now.Planned.Error;
        return true;
    }
    bool IsHalved() const { return Hit_ == Blow::ShortWrite || Hit_ == Blow::KillInside; }
    bool WasShort() const { return Hit_ == Blow::ShortWrite; }

    void Succeeded(Step step) const {
        const int kept = errno;
        Now.Taken.push_back(std::move(step));
        if (Hit_ == Blow::KillInside || Hit_ == Blow::KillAfter)
            Die();
        errno = kept;
    }
    void Ended() const {
        if (Hit_ == Blow::KillInside || Hit_ == Blow::KillAfter)
            Die();
    }

private:
    Blow Hit_ = Blow::None;
};

bool IsPlanned(Counted kind, int number, const std::string& path) {
    const Plan& plan = Now.Planned;
    if (plan.Kind != kind || plan.What != Blow::Fail || number < plan.At || number >= plan.At + plan.Times)
        return false;
    Strike(path);
    errno = plan.Error;
    return true;
}

bool ReadFails(const std::string& path) {
    return IsPlanned(Counted::Reads, ++Now.Reads, path);
}

bool LookFails(const std::string& path) {
    return IsPlanned(Counted::Looks, ++Now.Looks, path);
}

bool NameFails(const std::string& path) {
    const bool fails = IsPlanned(Counted::Names, ++Now.Names, path);
    return LookFails(path) || fails;
}

} // namespace

bool LookFails(int folder, const char* path) {
    const auto inside = Inside(folder, path);
    return inside && NameFails(*inside);
}

bool LookFails(int file) {
    const auto inside = Inside(file);
    return inside && LookFails(*inside);
}

int Open(int folder, const char* path, int flags, const Forward& forward) {
    const auto inside = Inside(folder, path);
    if (!inside)
        return forward();
    if ((flags & O_PATH) != 0) // a folder as the start of further calls, which is not read
        return NameFails(*inside) ? -1 : forward();
    const bool writes = (flags & O_ACCMODE) != O_RDONLY || (flags & (O_CREAT | O_TRUNC)) != 0;
    if (!writes)
        return ReadFails(*inside) ? -1 : forward();
    struct stat found {};
    const bool isThere = LookAt(*inside, found);
    const bool makes = (flags & O_CREAT) != 0 && !isThere;
    const Attempt attempt(Call::Open, *inside, makes);
    if (attempt.Fails(makes))
        return -1;
    const int file = forward();
    if (file < 0) {
        attempt.Ended();
        return file;
    }
    Step step;
    step.Path = *inside;
    step.Made = makes;
    step.MadeEmpty = !makes && (flags & O_TRUNC) != 0;
    step.File = makes ? NewNumberOf(file) : NumberOf(file);
    attempt.Succeeded(std::move(step));
    return file;
}

ssize_t Write(int file, const void* bytes, std::size_t count, std::int64_t offset,
              const std::function<ssize_t(std::size_t)>& forward) {
    const auto inside = Inside(file);
    if (!inside)
        return forward(count);
    if (Now.WriteFails) {
        Now.WriteFails = false;
        errno = ENOSPC;
        return -1;
    }
    const Attempt attempt(Call::Write, *inside, true);
    if (attempt.Fails(true))
        return -1;
    const std::size_t wanted = attempt.IsHalved() ? count / 2 : count;
    const ssize_t written = wanted > 0 ? forward(wanted) : 0;
    if (written < 0) {
        attempt.Ended();
        return written;
    }
    Now.WriteFails = attempt.WasShort();
    Step step;
    step.What = Call::Write;
    step.Path = *inside;
    step.File = NumberOf(file);
    step.Offset = offset;
    step.Bytes.assign(static_cast<const char*>(bytes), static_cast<std::size_t>(written));
    attempt.Succeeded(std::move(step));
    if (written == 0 && attempt.WasShort()) {
        Now.WriteFails = false;
        errno = ENOSPC;
        return -1;
    }
    return written;
}

ssize_t Read(int file, const std::function<ssize_t()>& forward) {
    const auto inside = Inside(file);
    return inside && ReadFails(*inside) ? -1 : forward();
}

namespace {

/// Any other step, whose effect is known from its arguments.
int Other(Step step, bool takesRoom, const Forward& forward) {
    const Attempt attempt(step.What, step.Path, takesRoom);
    if (attempt.Fails(takesRoom))
        return -1;
    const int result = forward();
    if (result == 0)
        attempt.Succeeded(std::move(step));
    else
        attempt.Ended();
    return result;
}

} // namespace

int Truncate(int file, std::int64_t size, const Forward& forward) {
    const auto inside = Inside(file);
    if (!inside)
        return forward();
    Step step;
    step.What = Call::Truncate;
    step.Path = *inside;
    step.File = NumberOf(file);
    step.Offset = size;
    return Other(std::move(step), false, forward);
}

int Sync(int file, const Forward& forward) {
    const auto inside = Inside(file);
    if (!inside)
        return forward();
    struct stat found {};
    LookAt(file, found);
    Step step;
    step.What = S_ISDIR(found.st_mode) ? Call::SyncFolder : Call::Sync;
    step.Path = *inside;
    step.File = NumberOf(found);
    return Other(std::move(step), false, [] { return 0; });
}

int Rename(int fromFolder, const char* from, int toFolder, const char* to, const Forward& forward) {
    const auto source = Inside(fromFolder, from);
    const auto target = Inside(toFolder, to);
    if (!source || !target)
        return forward();
    Step step;
    step.What = Call::Rename;
    step.Path = *source;
    step.To = *target;
    step.File = NumberOf(*source);
    return Other(std::move(step), false, forward);
}

int Unlink(int folder, const char* path, const Forward& forward) {
    const auto inside = Inside(folder, path);
    if (!inside)
        return forward();
    Step step;
    step.What = Call::Unlink;
    step.Path = *inside;
    step.File = NumberOf(*inside);
    return Other(std::move(step), false, forward);
}

int MakeFolder(int folder, const char* path, const Forward& forward) {
    const auto inside = Inside(folder, path);
    if (!inside)
        return forward();
    Step step;
    step.What = Call::MakeFolder;
    step.Path = *inside;
    return Other(std::move(step), true, forward);
}

Watch::Watch(const std::string& root, const Plan& plan) {
    Now = {};
    Now.Root = root;
    Now.Planned = plan;
    Now.Began.Held = ReadTree(root);
    for (const auto& [path, bytes] : Now.Began.Held.Files)
        Now.Began.Numbers[path] = NumberOf(path);
    Now.On = true;
}

Watch::~Watch() {
    Now.On = false;
}

int Watch::Steps() {
    return static_cast<int>(Now.Kinds.size());
}

int Watch::Reads() {
    return Now.Reads;
}

int Watch::Looks() {
    return Now.Looks;
}

int Watch::Names() {
    return Now.Names;
}

bool Watch::IsOn() {
    return Now.On;
}

bool Watch::Struck() {
    return Now.Struck;
}

const std::string& Watch::StruckPath() {
    return Now.StruckPath;
}

const std::vector<Call>& Watch::Kinds() {
    return Now.Kinds;
}

const std::vector<Step>& Watch::StepsTaken() {
    return Now.Taken;
}

const Start& Watch::Began() {
    return Now.Began;
}

} // namespace disk
