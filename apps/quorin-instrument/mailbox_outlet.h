// SPDX-License-Identifier: MIT
// The server's side of a mailbox folder. "rfcomm.run" is there while the server runs, "ipcout.lock" while it writes,
// and "ipcout.txt" is a delivery, which the reader deletes.
#pragma once

#include "apps/quorin-instrument/outlet.h"

namespace instrument {

class Mailbox final : public Outlet {
public:
    /// The folder belongs to one server at a time.
    explicit Mailbox(std::string folder) : Folder(std::move(folder)) {}
    ~Mailbox() override;

    /// Takes over what a server that was killed has left: its mark and its lock.
    Outcome Open() override;
    /// Makes one delivery, as soon as the last one has been taken.
    Outcome Send(std::string_view bytes) override;
    /// Waits until the last delivery has been taken, but no longer than `linger`. A delivery that nobody took stays.
    Outcome Finish(Linger linger) override;

private:
    std::string Path(const char* name) const { return Folder + "/" + name; }
    bool DeliveryThere() const;
    Outcome Write(const char* name, std::string_view bytes);

    std::string Folder;
    bool Running = false;
};

} // namespace instrument
