// SPDX-License-Identifier: MIT
#include "backends/host/draft_folder.h"

#include "backends/host/private_folder.h"

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <tuple>
#include <unistd.h>

namespace backends {

namespace {

constexpr std::string_view Ending = ".draft";
constexpr std::int64_t LargestDraft = 16 * 1024 * 1024; // bytes

std::vector<std::string> NamesIn(const std::string& path) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(path.c_str()), ::closedir);
    while (const dirent* const entry = folder ? ::readdir(folder.get()) : nullptr) {
        const std::string name = entry->d_name;
        if (name.size() > Ending.size() && name.ends_with(Ending))
            names.push_back(name);
    }
    return names;
}

std::string BytesIn(const std::string& path) {
    FileEntry entry;
    Descriptor file;
    struct stat found {};
    if (EntryAt(path, entry) != NoError || OpenRegular(entry, O_RDONLY | O_CLOEXEC, file) != NoError ||
        ::fstat(file.Number(), &found) != 0 || found.st_size > LargestDraft)
        return {};
    std::string bytes(static_cast<std::size_t>(found.st_size), '\0');
    const std::int64_t count = ReadAt(file.Number(), bytes.data(), bytes.size(), 0);
    bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return bytes;
}

} // namespace

Text DraftFolder::Write(const std::string& name, const std::string& bytes) {
    FileEntry entry{{}, name};
    if (const Text why = OpenPrivateFolder(Folder_, OthersUse, entry.Folder); !why.empty())
        return why; // what is on the screen names people and places
    Replacement file(std::move(entry));
    ErrorNumber error = file.Begin();
    if (error == NoError)
        error = WriteAll(file.File(), bytes, 0);
    if (error == NoError)
        error = file.Commit();
    return error == NoError ? Text() : ErrorText(error);
}

void DraftFolder::Remove(const std::string& name) {
    FileEntry entry;
    if (EntryAt(Folder_ + "/" + name, entry) == NoError)
        RemoveFrom(entry.Folder, entry.Name);
}

std::vector<DraftFolder::Kept> DraftFolder::Of(const companion::RootId& root) const {
    std::vector<Kept> drafts;
    for (const std::string& name : NamesIn(Folder_)) {
        const auto draft = companion::DraftFrom(BytesIn(Folder_ + "/" + name));
        if (draft && IsOf(*draft, root))
            drafts.push_back({name, *draft});
    }
    std::sort(drafts.begin(), drafts.end(), [](const Kept& one, const Kept& other) {
        return std::tie(one.Content.Time, one.Name) > std::tie(other.Content.Time, other.Name);
    });
    return drafts;
}

std::vector<Text> DraftFolder::Unreadable() const {
    std::vector<Text> lines;
    for (const std::string& name : NamesIn(Folder_)) {
        const std::string path = Folder_ + "/" + name;
        const std::string bytes = BytesIn(path);
        if (!companion::DraftFrom(bytes))
            lines.push_back(modStringTools::FromBytes(path) + u": " + companion::WhyNoDraft(bytes));
    }
    return lines;
}

companion::RootId RootIdOf(const std::string& folder) {
    companion::RootId root;
    FolderId id;
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.Valid() || IdOf(opened, id) != NoError)
        return root;
    root.Device = id.Device;
    root.Inode = id.Number;
    Canonical(folder, root.Path);
    return root;
}

} // namespace backends
