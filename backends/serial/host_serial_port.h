// SPDX-License-Identifier: MIT
// A serial port of the host, or a pseudo terminal. No thread and no loop of its own: whoever uses it waits until its
// descriptor can be read, and then takes what is there.
#pragma once

#include "backends/files/host_files.h"
#include "backends/serial/byte_source.h"

namespace backends {

class SerialDevice {
public:
    SerialDevice() = default;
    SerialDevice(const SerialDevice&) = delete;
    SerialDevice& operator=(const SerialDevice&) = delete;
    ~SerialDevice() { Close(); }

    /// Opens a terminal by its path, with settings such as "9600,N,8,1": speed, parity N, E or O, data bits 5 to 8,
    /// stop bits 1 or 2. Raw, without flow control, and for this program alone until it is closed. What the device has
    /// waiting already is kept. Fails with NotAvailable for a path that is no terminal, for settings that can't be
    /// read or had, and while another program holds the port.
    ErrorNumber Open(const std::string& path, const Text& lineSettings);
    void Close();
    bool IsOpen() const { return Port.Valid(); }

    /// For poll or select; -1 when it is closed. It is ready when the device is gone, too.
    int Descriptor() const { return Port.Number(); }

    /// Appends what can be read without waiting, up to 64 KB at a time. Bytes that came before the device went are
    /// given first, and the next call returns Gone, as each does while it is closed.
    ReadState ReadAvailable(std::string& bytes);

private:
    backends::Descriptor Port;
};

} // namespace backends
