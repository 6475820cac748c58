// SPDX-License-Identifier: MIT
#include "companion/download_search.h"

#include "src/drivers/downloads.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/settings.h"
#include "src/storage/table_lack.h"

#include <algorithm>
#include <vector>

namespace companion {

using modQuorin::RegisteredDownload;

namespace {

bool IsInstalled(const Text& driver) {
    using namespace modFileSystem;
    const bool is = LookAtTable(modQuorin::Paths.DriversFile) == TableLack::Nothing && FindRow(NameSelection(driver));
    CloseTable();
    return is;
}

} // namespace

DownloadFound FindDownload(const Text& name) {
    const std::vector<RegisteredDownload> all = modQuorin::RegisteredDownloads();
    auto found = std::find_if(all.begin(), all.end(), [&name](const auto& each) { return each.File == name; });
    if (found == all.end()) {
        const auto isCalled = [&name](const RegisteredDownload& each) { return !name.empty() && each.Alias == name; };
        found = std::find_if(all.begin(), all.end(), isCalled);
        const auto another = found == all.end() ? found : std::find_if(found + 1, all.end(), isCalled);
        if (another != all.end())
            return {{},
                    {},
                    {},
                    u"More than one download is called " + name + u": " + found->File + u", " + another->File +
                        u". Name the file."};
    }
    if (found == all.end())
        return {{}, {}, {}, u"There is no download " + name + u"."};
    if (!IsInstalled(found->Driver))
        return {found->Driver, found->File, found->Alias,
                found->File + u" can't be opened: its driver " + found->Driver + u" is not installed."};
    return {found->Driver, found->File, found->Alias, {}};
}

} // namespace companion
