// SPDX-License-Identifier: MIT
// A serial port of the host, or a pseudo terminal. It has no thread and no loop: the caller waits until its descriptor
// is readable and then reads what is available.
#pragma once

#include "backends/files/host_files.h"
#include "backends/port/byte_source.h"

namespace backends {

class SerialDevice {
public:
    SerialDevice() = default;
    SerialDevice(const SerialDevice&) = delete;
    SerialDevice& operator=(const SerialDevice&) = delete;
    ~SerialDevice() { Close(); }

    /// Opens a terminal by its path, with settings such as "9600,N,8,1": speed, parity N, E or O, data bits 5 to 8,
    /// stop bits 1 or 2. The port is in raw mode, without flow control, and exclusive to this program until it is
    /// closed. Bytes already waiting in the device are kept. Fails with NotAvailable if the path is not a terminal, if
    /// the settings are invalid or not supported, and while another program holds the port.
    ErrorNumber Open(const std::string& path, const Text& lineSettings);
    void Close();
    bool IsOpen() const { return Port_.Valid(); }

    /// Returns the descriptor for poll or select, -1 if closed. It is also ready when the device is gone.
    int Descriptor() const { return Port_.Number(); }

    /// Appends what can be read without waiting, up to 64 KB at a time. Bytes that arrived before the device
    /// disappeared are returned first; the next call, and any call while it is closed, returns Gone.
    ReadState ReadAvailable(std::string& bytes);

private:
    backends::Descriptor Port_;
};

} // namespace backends
