// SPDX-License-Identifier: MIT
// The server's side of a mailbox folder. "rfcomm.run" exists while the server runs, "ipcout.lock" while it writes, and
// "ipcout.txt" is a delivery, which the reader deletes.
#pragma once

#include "apps/quorin-instrument/outlet.h"

namespace instrument {

class Mailbox final : public Outlet {
public:
    /// Only one server at a time may use the folder.
    explicit Mailbox(std::string folder) : Folder_(std::move(folder)) {}
    ~Mailbox() override;

    /// Replaces what a killed server has left: "rfcomm.run" and its lock.
    Outcome Open() override;
    /// Waits until the last delivery has been taken, then makes a new one.
    Outcome Send(std::string_view bytes) override;
    /// Waits until the last delivery has been taken, but no longer than `linger`. A delivery that is not taken stays.
    Outcome Finish(Linger linger) override;

private:
    std::string Path(const char* name) const { return Folder_ + "/" + name; }
    bool DeliveryThere() const;
    Outcome Write(const char* name, std::string_view bytes);

    std::string Folder_;
    bool Running_ = false;
};

} // namespace instrument
