// SPDX-License-Identifier: MIT
// The data of the page's device as one zip file, out and in, and how much of it was never handed over. Each routine
// closes the open table of the form: no record may be on the screen.
#pragma once

#include "apps/page_exchange/page_download.h"
#include "backends/loop/back_end.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace apps {

class PageHandOver {
public:
    /// `root`: the root folder of the device. `scratch`: a folder outside of it, which is made when it is needed.
    PageHandOver(backends::BackEnd& device, std::string root, std::string scratch)
        : Device_(device), Root_(std::move(root)), Scratch_(std::move(scratch)) {}

    /// Returns the number of records that were never handed over.
    std::uint64_t NotHandedOver() const;

    /// Makes the zip file. Its words say what is in it.
    GivenFile Make();
    /// The zip file that was made last has reached the person. Returns why that can't be remembered, as a sentence;
    /// empty on success.
    std::string Remember() const;

    /// What has become of a zip file that came in.
    struct Report {
        std::string Title = {};
        std::string Words = {}; ///< the result, what a person must know, and each file and each record that differs
        bool IsBegun = false;   ///< false: nothing was changed
    };
    Report TakeIn(const std::string& name, std::string_view bytes);

private:
    struct Packed {
        std::string File;
        std::uint64_t Bytes = 0, Records = 0;
        std::string Sha256;
    };
    std::string MakeScratch() const;
    std::string WithoutScratch(std::string words) const;

    backends::BackEnd& Device_;
    std::string Root_, Scratch_;
    std::string ZipName_;
    std::vector<Packed> Packed_; ///< the files of the zip file that was made last
};

} // namespace apps
