// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/mailbox_outlet.h"

#include "apps/quorin-instrument/waiting.h"
#include "backends/descriptor/descriptor.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace instrument {

namespace {

constexpr const char* RunName = "rfcomm.run";
constexpr const char* LockName = "ipcout.lock";
constexpr const char* DeliveryName = "ipcout.txt";
constexpr const char* UnfinishedName = "ipcout.tmp"; // readers ignore this name

} // namespace

Mailbox::~Mailbox() {
    if (Running_) {
        unlink(Path(UnfinishedName).c_str());
        unlink(Path(LockName).c_str());
        unlink(Path(RunName).c_str());
    }
}

Outcome Mailbox::Open() {
    struct stat folder = {};
    if (stat(Folder_.c_str(), &folder) != 0) {
        return FailBySystem("can't open the mailbox " + Folder_);
    }
    if (!S_ISDIR(folder.st_mode)) {
        return Fail("the mailbox " + Folder_ + " is not a folder");
    }
    unlink(Path(LockName).c_str());
    const Outcome marked = Write(RunName, "");
    Running_ = marked == Outcome::Done;
    return marked;
}

Outcome Mailbox::Send(std::string_view bytes) {
    while (DeliveryThere()) {
        if (!PauseFor(LookInterval)) {
            return Outcome::Stopped;
        }
    }
    if (StopAsked()) {
        return Outcome::Stopped;
    }
    Outcome sent = Write(LockName, "");
    if (sent == Outcome::Done) {
        sent = Write(UnfinishedName, bytes);
    }
    if (sent == Outcome::Done && std::rename(Path(UnfinishedName).c_str(), Path(DeliveryName).c_str()) != 0) {
        sent = FailBySystem("can't rename to " + Path(DeliveryName));
    }
    unlink(Path(LockName).c_str());
    return sent;
}

Outcome Mailbox::Finish(Linger linger) {
    const auto end = std::chrono::steady_clock::now() + linger.value_or(std::chrono::milliseconds(0));
    while (DeliveryThere() && (!linger || std::chrono::steady_clock::now() < end)) {
        if (!PauseFor(LookInterval)) {
            return Outcome::Stopped;
        }
    }
    return Outcome::Done;
}

/// If the folder can't be searched, returns false: the write that follows fails and reports why.
bool Mailbox::DeliveryThere() const {
    return access(Path(DeliveryName).c_str(), F_OK) == 0;
}

Outcome Mailbox::Write(const char* name, std::string_view bytes) {
    const backends::Descriptor file(open(Path(name).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    bool written = file.Valid();
    while (written && !bytes.empty()) {
        const auto count = write(file.Number(), bytes.data(), bytes.size());
        written = count > 0 || (count < 0 && errno == EINTR);
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return written ? Outcome::Done : FailBySystem("can't write " + Path(name));
}

} // namespace instrument
