// SPDX-License-Identifier: MIT
#include "apps/quorin/arriving.h"

#include "backends/files/folder_names.h"
#include "backends/files/host_files.h"
#include "backends/files/plain_file.h"
#include "backends/qt/conversions.h"
#include "src/drivers/package_lines.h"
#include "src/storage/settings.h"
#include "src/view/platform/device_traits.h"

#include <QFile>
#include <QFileDialog>
#include <QStandardPaths>

#include <iostream>
#include <utility>

namespace quorin {

using backends::qt::ToQt;
using modStringTools::FromBytes;
using namespace modQuorin;

Arriving::Arriving(backends::qt::QtPlatform& device, DataFolder& data)
    : Device_(device), Data_(data), Led_(device, *this), Box_(device.boxes, device.window), Bar_(&device.window),
      Drops_(device.window, [this](const std::vector<std::string>& files) { Arrive(files, "/"); }) {
    Bar_.NotNow = [this] { Led_.DropAll(); };
    device.window.PutAbove(Bar_);
    device.loop.Listen(*this);
}

// --- what a person has given -----------------------------------------------------------------------------------------

void Arriving::Arrive(const std::vector<std::string>& names, const std::string& folder) {
    for (const std::string& name : names)
        Take(!name.empty() && name.front() == '/' ? name : folder + "/" + name, name);
}

void Arriving::Take(const std::string& path, const std::string& name) {
    const bool isPath = name.find('/') != std::string::npos;
    if (name.empty())
        Led_.Tell(u"An empty name is neither a driver package nor a download.");
    else if (IsPackageName(FromBytes(backends::NameOf(path))))
        TakePackage(path);
    else if (!isPath)
        Led_.AddDownload(FromBytes(name));
    else if (IsInDataFolder(path))
        Led_.AddDownload(DownloadAt(path));
    else
        Led_.Tell(FromBytes(path) + (backends::IsFolder(path)
                                         ? u" is a folder."
                                         : u" is neither a driver package (.qvd) nor a file of the data folder, " +
                                               FromBytes(Data_.Path()) + u"."));
}

void Arriving::TakePackage(const std::string& path) {
    const backends::PlainFile file = backends::ReadPlainFile(path, companion::LargestPackage);
    if (file.Why.empty())
        return Led_.AddPackage(FromBytes(backends::NameOf(path)), file.Bytes);
    const Text why = file.Error != 0 ? platform::ErrorText(backends::FromErrno(file.Error)) : FromBytes(file.Why);
    Led_.Tell(FromBytes(path) + u" can't be read: " + why + u".");
}

bool Arriving::IsInDataFolder(const std::string& path) const {
    std::string file;
    std::string folder;
    return backends::Canonical(path, file) == platform::NoError && !backends::IsFolder(file) &&
           backends::Canonical(Data_.Path(), folder) == platform::NoError && backends::FolderOf(file) == folder;
}

/// In a memory of line databases, the register has the name of a text file.
Text Arriving::DownloadAt(const std::string& path) const {
    const Text name = FromBytes(backends::NameOf(path));
    const Text folder = Paths.ControlFile.substr(0, Paths.ControlFile.rfind(u'\\') + 1);
    return platform::Traits().IsMemory(folder) ? name.substr(0, name.rfind(u'.')) + u".txt" : name;
}

void Arriving::ChooseFiles() {
    if (DialogIsOpen_ || Device_.boxes.AnyIsOpen())
        return;
    auto* const dialog = new QFileDialog(&Device_.window, QStringLiteral("Install a driver"));
    dialog->setObjectName(QStringLiteral("packageDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setNameFilters({QStringLiteral("Driver packages (*.qvd *.QVD)"), QStringLiteral("All files (*)")});
    dialog->setDirectory(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation));
    QObject::connect(dialog, &QFileDialog::filesSelected, [this](const QStringList& files) {
        std::vector<std::string> paths;
        for (const QString& file : files)
            paths.push_back(QFile::encodeName(file).toStdString());
        Arrive(paths, "/");
    });
    QObject::connect(dialog, &QFileDialog::finished, [this] {
        DialogIsOpen_ = false;
        Device_.boxes.OfWindowClosed();
    });
    DialogIsOpen_ = true;
    Device_.boxes.OfWindowOpens();
    dialog->open();
}

// --- what is told ----------------------------------------------------------------------------------------------------

void Arriving::Note(const Text& problem) {
    std::cerr << "quorin: " << modStringTools::ToBytes(problem) << std::endl;
}

void Arriving::Show(const Text& problems) {
    Box_.Open(ToQt(problems), {.Name = "arrivalBox"}, [](QMessageBox::StandardButton) {});
}

void Arriving::Ask(const Text& question, apps::ArrivalQuestion about, std::function<void(bool)> answered) {
    Box_.Open(
        ToQt(question),
        {.Name = about == apps::ArrivalQuestion::Check ? "checkBox" : "replaceBox",
         .Icon = QMessageBox::Question,
         .Buttons = QMessageBox::Yes | QMessageBox::No,
         .Safe = QMessageBox::No},
        [answered = std::move(answered)](QMessageBox::StandardButton answer) { answered(answer == QMessageBox::Yes); });
}

bool Arriving::RaiseWhatIsPending() {
    Bar_.Show(ToQt(Led_.Offer(Device_.boxes.AnyIsOpen())));
    return false;
}

} // namespace quorin
