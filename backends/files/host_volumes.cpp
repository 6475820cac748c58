// SPDX-License-Identifier: MIT
#include "backends/files/host_volumes.h"

namespace backends {

void HostVolumes::MakeFolders(const Text& keptOn) const {
    for (const HostVolume& volume : List_) {
        if (volume.Root != keptOn)
            Paths_.MakeVolume(volume.Root); // if this fails, the volume counts as removed
    }
}

Text HostVolumes::First() {
    NextVolume_ = 0;
    return Next();
}

Text HostVolumes::Next() {
    return NextVolume_ < List_.size() ? List_[NextVolume_++].Root : Text();
}

ErrorNumber HostVolumes::Space(const Text& root, std::int32_t& bytes) {
    for (const HostVolume& volume : List_) {
        if (volume.Root != root)
            continue;
        if (!volume.Kilobytes)
            return NotAvailable;
        Descriptor folder;
        if (const ErrorNumber error = Paths_.OpenFolder(root, folder); error != NoError)
            return error;
        bytes = static_cast<std::int32_t>(static_cast<std::uint32_t>(*volume.Kilobytes) * 1024U);
        return NoError;
    }
    return NotAvailable;
}

} // namespace backends
