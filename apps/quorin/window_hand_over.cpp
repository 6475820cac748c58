// SPDX-License-Identifier: MIT
#include "apps/quorin/window_hand_over.h"

#include "companion/words.h"
#include "src/text/text.h"

#include <QFile>
#include <QFileDialog>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorin {

using modStringTools::FromBytes;

namespace {

const std::string FolderName = "HandOver"; ///< the folder of the last time
constexpr int OddReceipt = 5;              // exit status: done all the same

/// Returns the number of this name in the last object of the output; 0 if it has none.
std::int64_t NumberOf(const QByteArray& output, const char* name) {
    const QByteArray lines = output.trimmed();
    const auto object = nlohmann::json::parse(lines.mid(lines.lastIndexOf('\n') + 1).toStdString(), nullptr, false);
    return object.is_object() ? object.value(name, std::int64_t{0}) : 0;
}

std::string Counted(std::int64_t count, const std::string& one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

} // namespace

WindowHandOver::WindowHandOver(backends::qt::QtPlatform& device, WindowSettings& settings,
                               const backends::DeviceOptions& options, std::string journal)
    : Process(AsHandOver, options), Device_(device), Settings_(settings) {
    if (!journal.empty())
        Journal_ = {QStringLiteral("--journal"), FromPath(journal)};
}

void WindowHandOver::Open() {
    auto* const dialog = new QFileDialog(&Device_.window, QStringLiteral("Hand over to the folder"));
    dialog->setObjectName(QStringLiteral("handOverDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setLabelText(QFileDialog::Accept, QStringLiteral("Hand over"));
    dialog->setDirectory(FromPath(Settings_.Get(FolderName)));
    QObject::connect(dialog, &QFileDialog::fileSelected, &Device_.window,
                     [this](const QString& folder) { To(QFile::encodeName(folder).toStdString()); });
    QObject::connect(dialog, &QFileDialog::finished, [this] { Device_.boxes.OfWindowClosed(); });
    Device_.boxes.OfWindowOpens();
    dialog->open();
}

void WindowHandOver::To(const std::string& folder) {
    if (std::exchange(IsRunning_, true))
        return;
    Settings_.Save(FolderName, folder);
    Device_.onlooker.notices.Raise(companion::HandOverState(u"Handing over to " + FromBytes(folder) + u"…"));
    Process.Start(&Device_.window, Journal_ + QStringList{QStringLiteral("--hand-over"), FromPath(folder)},
                  OwnProcess::NoLimit, [this, folder](int status, const QByteArray& output, const QByteArray& errors) {
                      IsRunning_ = false;
                      Tell(status, output, errors, folder);
                  });
}

void WindowHandOver::Tell(int status, const QByteArray& output, const QByteArray& errors, const std::string& folder) {
    std::string told = WordsOf(errors, "quorin");
    std::replace(told.begin(), told.end(), '\n', ' ');
    if (status != 0 && status != OddReceipt)
        return Device_.onlooker.notices.Raise(
            companion::HandOverFailed(FromBytes(told.empty() ? "The hand-over to " + folder + " has failed." : told)));
    std::string words = "Handed over to " + folder + ": " + Counted(NumberOf(output, "handed_over"), "file") + ", " +
                        Counted(NumberOf(output, "records"), "record") + ".";
    if (!told.empty())
        words += " " + told;
    Device_.onlooker.notices.Raise(companion::HandOverState(FromBytes(words)));
}

void WindowHandOver::Count() {
    Process.Start(&Device_.window, {QStringLiteral("--count")}, OwnProcess::NoLimit,
                  [this](int status, const QByteArray& output, const QByteArray& errors) {
                      const std::int64_t records = NumberOf(output, "not_handed_over");
                      if (status != 0)
                          Tell(status, output, errors, "");
                      else if (records > 0 && !IsRunning_)
                          Device_.onlooker.notices.Raise(companion::NotHandedOver(records));
                  });
}

} // namespace quorin
