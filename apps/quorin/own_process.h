// SPDX-License-Identifier: MIT
// Work on the data as a process of its own: this program under another name, because the window's form has the storage
// layer's one open table. The packages of the window and of the console are complete without each other.
#pragma once

#include "backends/host/host_device.h"

#include <QByteArray>
#include <QObject>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <string>

namespace quorin {

// The first word of a command line that makes this program another one.
inline constexpr const char* AsExporter = "--as-quorin-export";
inline constexpr const char* AsHandOver = "--as-hand-over";

class OwnProcess {
public:
    /// A status below 0: it could not be started, or was ended.
    using Ended = std::function<void(int status, const QByteArray& output, const QByteArray& errors)>;
    static constexpr std::size_t NoLimit = static_cast<std::size_t>(-1);

    /// `name`: the first word. `options`: the device of this run, whose options follow.
    OwnProcess(const char* name, const backends::DeviceOptions& options);

    /// Starts it with these words besides. It ends with its parent, and with status 0 when it has written so many
    /// bytes.
    void Start(QObject* parent, const QStringList& words, std::size_t mostOutput, const Ended& ended) const;

    /// The program and its first words, for tests.
    QString Program;
    QStringList FirstWords;
};

/// Returns what standard error says, without the name of the program before each line.
std::string WordsOf(const QByteArray& errors, const std::string& program);

QString FromPath(const std::string& path);

} // namespace quorin
