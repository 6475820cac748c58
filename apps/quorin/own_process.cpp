// SPDX-License-Identifier: MIT
#include "apps/quorin/own_process.h"

#include "src/text/text.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <memory>
#include <sstream>

namespace quorin {

QString FromPath(const std::string& path) {
    return QFile::decodeName(QByteArray::fromStdString(path));
}

std::string WordsOf(const QByteArray& errors, const std::string& program) {
    std::istringstream in(errors.toStdString());
    const std::string name = program + ": ";
    std::string words;
    for (std::string line; std::getline(in, line);)
        words += (words.empty() ? "" : "\n") + (line.rfind(name, 0) == 0 ? line.substr(name.size()) : line);
    return words;
}

OwnProcess::OwnProcess(const char* name, const backends::DeviceOptions& options)
    : Program(QCoreApplication::applicationFilePath()),
      FirstWords({QString::fromLatin1(name), QStringLiteral("--root"), FromPath(options.Root),
                  QStringLiteral("--device"), QString::number(options.DeviceType)}) {
    if (!options.Settings.empty())
        FirstWords += {QStringLiteral("--settings"), FromPath(options.Settings)};
    for (const backends::HostVolume& volume : options.Volumes)
        FirstWords += {QStringLiteral("--volume"),
                       QString::fromStdString(modStringTools::ToBytes(volume.Root) + "=" +
                                              (volume.Kilobytes ? std::to_string(*volume.Kilobytes) : "fail"))};
}

void OwnProcess::Start(QObject* parent, const QStringList& words, std::size_t mostOutput, const Ended& ended) const {
    auto* const process = new QProcess(parent);
    const auto output = std::make_shared<QByteArray>();
    QObject::connect(process, &QProcess::readyReadStandardOutput, process, [process, output, mostOutput] {
        *output += process->readAllStandardOutput();
        if (static_cast<std::size_t>(output->size()) >= mostOutput)
            process->kill();
    });
    const auto end = [process, output, ended](int status) {
        *output += process->readAllStandardOutput();
        ended(status, *output, process->readAllStandardError());
        process->deleteLater();
    };
    QObject::connect(process, &QProcess::finished, process, [end, output, mostOutput](int code, auto how) {
        const bool isEnough = static_cast<std::size_t>(output->size()) >= mostOutput;
        end(isEnough ? 0 : how == QProcess::NormalExit ? code : -1);
    });
    QObject::connect(process, &QProcess::errorOccurred, process, [end](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end(-1);
    });
    process->start(Program, FirstWords + words);
    process->closeWriteChannel();
}

} // namespace quorin
