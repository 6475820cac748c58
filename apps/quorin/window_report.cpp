// SPDX-License-Identifier: MIT
#include "apps/quorin/window_report.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace quorin {

using backends::qt::ReportSource;

namespace {

/// In the folder in which a person looks for documents, with the time, so that two reports are two files.
std::string ProposedPath() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString where = QDir(folder).exists() ? folder : QDir::homePath();
    const QString name = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd-HHmm"));
    return QFile::encodeName(where + QStringLiteral("/quorin-report-") + name + QStringLiteral(".txt")).toStdString();
}

} // namespace

ReportSource WindowReport::Source() {
    return {.Days = [this] { return DaysOfReport(Places_); },
            .Text =
                [this](const std::string& day, bool isWhole) {
                    return ProblemReport({Places_, VersionsOfRun(Device_.system.DeviceType())}, day, isWhole);
                },
            .Save = SaveReport,
            .Path = ProposedPath};
}

void WindowReport::Open() {
    if (!Dialog_)
        Dialog_.emplace(Source(), Device_.window);
    Dialog_->Open();
}

} // namespace quorin
