// SPDX-License-Identifier: MIT
#include "apps/quorin/window_export.h"

#include "apps/quorin-export/formats.h"
#include "apps/quorin/export_preview.h"
#include "companion/form_state.h"
#include "src/text/text.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <sstream>
#include <utility>

namespace quorin {

using backends::qt::ExportChoice;
using backends::qt::ExportPreview;
using backends::qt::ExportSource;
using modStringTools::ToBytes;

namespace {

constexpr std::size_t PreviewBytes = 1 << 18; // of output: far more than ten records, of most tables
constexpr int OddInput = 5;                   // exit status: done all the same

const std::string FormatName = "ExportFormat";
const std::string LeftOutName = "ExportLeftOut"; ///< columns, with line ends between them, as settings write those

/// Returns why an export has failed; empty if it has not.
std::string WhyFailed(int status, const QByteArray& errors) {
    if (status == 0 || status == OddInput)
        return {};
    const std::string told = WordsOf(errors, "quorin-export");
    return told.empty() ? "The export has failed." : told;
}

/// The last words: behind "--" nothing is an option.
QStringList SourceOf(const std::string& file) {
    return {QStringLiteral("--"), QString::fromStdString(file)};
}

std::string TextOf(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() ? "" : "\n") + line;
    return text;
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

WindowExport::WindowExport(backends::qt::QtPlatform& device, WindowSettings& settings,
                           const backends::DeviceOptions& options)
    : Opener([](const std::string& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(FromPath(path))); }),
      Exporter(AsExporter, options), Device_(device), Settings_(settings) {
}

void WindowExport::Open() {
    if (!Dialog_)
        Dialog_.emplace(Source(), Device_.window);
    Dialog_->Open();
}

/// Returns the bare name of the download that is open, or selected in its list; empty if there is none.
std::string WindowExport::FileOfNow() const {
    const auto download = companion::DownloadOfNow();
    return download ? ToBytes(download->File) : std::string();
}

ExportSource WindowExport::Source() {
    ExportSource source;
    for (const exporter::FormatRow& row : exporter::Formats())
        if (!row.Picture) // a plot is of other columns than a table
            source.Formats.push_back({row.Name, row.Ending, std::string(row.Name) + ": " + row.Help});
    source.Download = [this] {
        File_ = FileOfNow();
        const bool isShown = companion::RecordIsOpen() && !File_.empty();
        return File_ + (isShown ? ". The record on the screen is in it as it was saved last." : "");
    };
    source.Preview = [this](const auto& show) { Preview(show); };
    source.Save = [this](const ExportChoice& choice, const std::string& path, const ExportSource::Done& done) {
        Export(Words(choice) + QStringList{QStringLiteral("-o"), FromPath(path)}, done,
               [](const QByteArray&) { return std::string(); });
    };
    source.Copy = [this](ExportChoice choice, const ExportSource::Done& done) {
        choice.Format = "csv";
        Export(Words(choice) + QStringList{QStringLiteral("--delimiter"), QStringLiteral("tab")}, done,
               [](const QByteArray& output) {
                   QApplication::clipboard()->setText(QString::fromUtf8(output));
                   return std::string();
               });
    };
    source.OpenIn = [this](const ExportChoice& choice, const ExportSource::Done& done) {
        if (!Opened_)
            Opened_.emplace();
        const auto row = std::find_if(exporter::Formats().begin(), exporter::Formats().end(),
                                      [&choice](const auto& each) { return choice.Format == each.Name; });
        const std::string name = File_.substr(0, File_.rfind('.')) + row->Ending;
        const QString path = Opened_->filePath(FromPath(name));
        Export(Words(choice) + QStringList{QStringLiteral("-o"), path}, done, [this, path](const QByteArray&) {
            return Opener(QFile::encodeName(path).toStdString())
                       ? std::string()
                       : "The desktop has no program for this format. Save the file, and open it from there.";
        });
    };
    source.Path = [this](const std::string& ending) {
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        const QString where = QDir(folder).exists() ? folder : QDir::homePath();
        const std::string name = File_.substr(0, File_.rfind('.'));
        return QFile::encodeName(where).toStdString() + "/" + (name.empty() ? "export" : name) + ending;
    };
    source.Last = [this] { return ExportChoice{Settings_.Get(FormatName), {}, LinesOf(Settings_.Get(LeftOutName))}; };
    source.Remember = [this](const ExportChoice& choice) {
        Settings_.Save(FormatName, choice.Format);
        Settings_.Save(LeftOutName, TextOf(choice.LeftOut));
    };
    return source;
}

/// Returns the words of a command line for this choice.
QStringList WindowExport::Words(const ExportChoice& choice) const {
    QStringList words = {QStringLiteral("--format"), QString::fromStdString(choice.Format)};
    for (const std::string& column : choice.Columns)
        words += {QStringLiteral("--column"), QString::fromStdString(column)};
    return words;
}

void WindowExport::Export(const QStringList& words, const ExportSource::Done& done,
                          const std::function<std::string(const QByteArray& output)>& finish) {
    Exporter.Start(&Device_.window, words + SourceOf(File_), OwnProcess::NoLimit,
                   [done, finish](int status, const QByteArray& output, const QByteArray& errors) {
                       if (const std::string why = WhyFailed(status, errors); !why.empty())
                           done(why, {});
                       else
                           done(finish(output), WordsOf(errors, "quorin-export"));
                   });
}

void WindowExport::Preview(const std::function<void(const ExportPreview&)>& show) {
    Exporter.Start(&Device_.window, Words({"jsonl", {}, {}}) + SourceOf(File_), PreviewBytes,
                   [show](int status, const QByteArray& output, const QByteArray& errors) {
                       ExportPreview preview = PreviewOf(output.toStdString());
                       if (const std::string why = WhyFailed(status, errors); !why.empty())
                           preview.Why = why;
                       show(preview);
                   });
}

} // namespace quorin
