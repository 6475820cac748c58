// SPDX-License-Identifier: MIT
#include "companion/packages.h"

#include "companion/driver_package.h"
#include "companion/file_lines.h"
#include "src/drivers/installation.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"

namespace companion {

namespace {

using modQuorin::DataCreator;
using modQuorin::DataType;

/// Sets the name under which the data folder has the package. Returns why there is no data folder.
platform::ErrorNumber NameIn(const Package& package, Text& fullName) {
    Text folder;
    const auto error = modFileSystem::FindDataPath(u"", folder);
    fullName = folder + modQuorin::PackageName(package.Name, folder);
    return error;
}

Text CannotPut(const Package& package, platform::ErrorNumber why) {
    return package.Name + u" can't be put into the data folder: " + platform::ErrorText(why) + u".";
}

} // namespace

Text TooLongForPackage(const Text& name) {
    return name + u" is too long for a driver package: more than 1 MB.";
}

Text TakePackage(const Text& name, std::string_view bytes, Package& package) {
    if (bytes.size() > LargestPackage)
        return TooLongForPackage(name);
    package = {name, LinesOf(modStringTools::FromBytes(bytes))};
    if (bytes.find('\0') != std::string_view::npos || !ReadPackage(package.Lines).Driver)
        return name + u" is no driver package: its first line that is no comment must have a driver's name, \"|\" and "
                      u"the name of a file.";
    return {};
}

PackagePlace PlaceOf(const Package& package) {
    PackagePlace place;
    if (const auto error = NameIn(package, place.FullName); error != platform::NoError) {
        place.WhyNot = CannotPut(package, error);
        return place;
    }
    std::vector<Text> lines;
    const auto error = modFileSystem::ReadLines(place.FullName, DataType, DataCreator, lines);
    place.IsFree = platform::IsMissing(error);
    if (error != platform::NoError && !place.IsFree)
        place.WhyNot = CannotPut(package, error);
    else if (error == platform::NoError && !lines.empty())
        place.There = lines == package.Lines ? Presence::Same : Presence::Other;
    return place;
}

Text PutPackage(const Package& package) {
    Text name;
    auto error = NameIn(package, name);
    if (error == platform::NoError)
        error = modFileSystem::PutLines(name, DataType, DataCreator, package.Lines);
    return error == platform::NoError ? Text() : CannotPut(package, error);
}

Text ReplaceQuestion(const Package& package) {
    return u"The data folder has a " + package.Name + u" already, with another content. Replace it?";
}

} // namespace companion
