// SPDX-License-Identifier: MIT
// Cuts the bytes of a journal into its lines, as they come.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace journal {

class LineCutter {
public:
    /// Adds bytes that follow the ones before. Lines that were returned are not valid any more.
    void Add(std::string_view bytes);
    /// Returns the next line without its LF; nothing while it has none: such a line was interrupted, or is being
    /// written.
    std::optional<std::string_view> Next();
    /// True if bytes without an end of line are left. REQUIRES: Next() has returned nothing.
    bool HasRest() const { return Start_ < Waiting_.size(); }

private:
    std::string Waiting_;
    std::size_t Start_ = 0;    ///< of the next line in Waiting_
    std::size_t Searched_ = 0; ///< there is no LF between Start_ and here
};

} // namespace journal
