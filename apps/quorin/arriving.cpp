// SPDX-License-Identifier: MIT
#include "apps/quorin/arriving.h"

#include "apps/quorin/sample_driver.h"
#include "backends/files/folder_names.h"
#include "backends/files/host_files.h"
#include "backends/files/plain_file.h"
#include "backends/qt/conversions.h"
#include "companion/download_search.h"
#include "companion/package_question.h"
#include "src/drivers/downloads.h"
#include "src/drivers/installation.h"
#include "src/drivers/package_lines.h"
#include "src/drivers/selection.h"
#include "src/storage/settings.h"
#include "src/view/platform/device_traits.h"

#include <QFile>
#include <QFileDialog>
#include <QStandardPaths>

#include <algorithm>
#include <iostream>
#include <utility>

namespace quorin {

using backends::qt::ToQt;
using companion::InTheWay;
using modStringTools::FromBytes;
using namespace modQuorin;

Arriving::Arriving(backends::qt::QtPlatform& device, DataFolder& data)
    : Device_(device), Data_(data), Guide_(device), Box_(device.boxes, device.window), Bar_(&device.window),
      Drops_(device.window, [this](const std::vector<std::string>& files) { Arrive(files, "/"); }) {
    Bar_.NotNow = [this] { Waiting_.DropAll(); };
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
        Tell(u"An empty name is neither a driver package nor a download.");
    else if (IsPackageName(FromBytes(backends::NameOf(path))))
        TakePackage(path);
    else if (!isPath)
        Waiting_.AddDownload(FromBytes(name));
    else if (IsInDataFolder(path))
        Waiting_.AddDownload(DownloadAt(path));
    else
        Tell(FromBytes(path) + (backends::IsFolder(path)
                                    ? u" is a folder."
                                    : u" is neither a driver package (.qvd) nor a file of the data folder, " +
                                          FromBytes(Data_.Path()) + u"."));
}

void Arriving::TakePackage(const std::string& path) {
    const backends::PlainFile file = backends::ReadPlainFile(path, companion::LargestPackage);
    if (file.Why.empty())
        return AddPackage(FromBytes(backends::NameOf(path)), file.Bytes);
    const Text why = file.Error != 0 ? platform::ErrorText(backends::FromErrno(file.Error)) : FromBytes(file.Why);
    Tell(FromBytes(path) + u" can't be read: " + why + u".");
}

void Arriving::AddPackage(const Text& name, std::string_view bytes) {
    companion::Package package;
    const Text problem = companion::TakePackage(name, bytes, package);
    if (problem.empty())
        Waiting_.Add(package);
    else
        Tell(problem);
}

void Arriving::ArriveSample() {
    AddPackage(u"climate.qvd", SampleDriver());
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

void Arriving::Tell(const Text& problem) {
    std::cerr << "quorin: " << modStringTools::ToBytes(problem) << std::endl;
    Problems_.push_back(problem);
}

void Arriving::ShowProblems() {
    Text all;
    for (const Text& problem : std::exchange(Problems_, {}))
        all += (all.empty() ? u"" : u"\n\n") + problem;
    Box_.Open(ToQt(all), {.Name = "arrivalBox"}, [](QMessageBox::StandardButton) {});
}

bool Arriving::RaiseWhatIsPending() {
    const InTheWay what = companion::WhatIsInTheWay(Device_.boxes.AnyIsOpen());
    Bar_.Show(what == InTheWay::Nothing ? QString() : ToQt(Waiting_.Offer(what)));
    return false;
}

// --- the steps -------------------------------------------------------------------------------------------------------

void Arriving::Step() {
    if (!Device_.IsAtRest())
        return;
    if (!Problems_.empty())
        return ShowProblems();
    if (!Waiting_.Any())
        return GoHome(); // also after a refusal
    if (companion::WhatIsInTheWay(false) != InTheWay::Nothing)
        return;
    if (Waiting_.First().IsPackage())
        Install();
    else
        OpenDownload();
}

void Arriving::Install() {
    const companion::Arrival wanted = Waiting_.First();
    const companion::PackagePlace place = companion::PlaceOf(wanted.Driver);
    const Text asked = place.WhyNot.empty() && !wanted.MayInstall ? companion::InstallQuestion(wanted.Driver) : Text();
    if (!asked.empty())
        return Ask(asked, "checkBox", &companion::Arrival::MayInstall);
    if (place.WhyNot.empty() && place.There == companion::Presence::Other && !wanted.MayReplace)
        return Ask(companion::ReplaceQuestion(wanted.Driver), "replaceBox", &companion::Arrival::MayReplace);
    Waiting_.DropFirst();
    Text why = place.WhyNot;
    if (why.empty() && place.There != companion::Presence::Same)
        why = companion::PutPackage(wanted.Driver);
    if (why.empty())
        LeadToInstallation(wanted.Driver.Name, place.FullName);
    else
        Tell(why);
    if (!Waiting_.Any())
        GoHome();
}

void Arriving::Ask(const Text& question, const char* box, bool companion::Arrival::*permission) {
    Box_.Open(ToQt(question),
              {.Name = box,
               .Icon = QMessageBox::Question,
               .Buttons = QMessageBox::Yes | QMessageBox::No,
               .Safe = QMessageBox::No},
              [this, permission, name = Waiting_.First().Driver.Name](QMessageBox::StandardButton answer) {
                  Waiting_.Answer(name, permission, answer == QMessageBox::Yes);
              });
}

/// The form shows what comes of it.
void Arriving::LeadToInstallation(const Text& name, const Text& fullName) {
    if (!Home_)
        Home_ = Screens.CurrentScreen == ScrList ? ScrPreferences : Screens.CurrentScreen;
    bool isThere = Guide_.GoTo(ScrAddDriver);
    if (isThere) {
        FollowDriverPackages();
        Guide_.Settle();
        isThere =
            Guide_.TapRow(fullName) && Screens.CurrentScreen == ScrAddDriver && Selection.SelectedPackage == fullName;
    }
    if (isThere)
        Guide_.Run(u"Install...");
    else
        Tell(name + u" is in the data folder. Install it by \"Add Driver...\".");
}

void Arriving::OpenDownload() {
    const Text name = Waiting_.First().Download;
    Waiting_.DropFirst();
    const companion::DownloadFound found = companion::FindDownload(name);
    if (!found.WhyNot.empty())
        return Tell(found.WhyNot);
    Home_.reset();
    if (Guide_.GoTo(ScrDrivers) && Guide_.TapRow(found.Driver) && Screens.CurrentScreen == ScrDownloads) {
        const auto& files = Downloads.DownloadFiles;
        const auto place = std::find(files.begin(), files.end(), found.File);
        if (place != files.end())
            Guide_.TapRow(static_cast<std::int32_t>(place - files.begin()));
    }
    if (Screens.CurrentScreen != ScrInfRecord)
        Tell(found.File + u" could not be opened with the driver " + found.Driver + u".");
}

/// Goes back to where the form was led away from, unless a person has gone elsewhere.
void Arriving::GoHome() {
    const auto home = std::exchange(Home_, std::nullopt);
    if (home && Screens.CurrentScreen == ScrAddDriver && !Device_.loop.Ending())
        Guide_.GoTo(*home);
}

} // namespace quorin
