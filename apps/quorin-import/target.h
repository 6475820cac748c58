// SPDX-License-Identifier: MIT
// The root folder into which a download is imported.
#pragma once

#include "apps/quorin-import/import_options.h"
#include "companion/values/columns.h"
#include "src/text/text.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace backends::headless {
class FormlessDevice;
}

namespace importer {

/// The device without a form: the storage layer's routines work on it. Whoever stores has the lock of the root folder.
class Target {
public:
    /// The options must exist as long as this.
    explicit Target(const Options& options);
    ~Target();

    /// Looks for the driver and for the place of the new download. Changes nothing. Returns why nothing can be
    /// imported, as a sentence; empty if it can.
    std::string Prepare();

    const std::string& Driver() const { return Driver_; } ///< as the table of drivers has it
    const std::string& File() const { return File_; }     ///< of the new download, without a folder
    const std::string& Header() const { return Header_; } ///< of the driver's downloads
    const std::vector<values::FieldRow>& Fields() const { return Fields_; }

    /// Stores a table of these lines, or of these bytes, as a new download. Returns why it is not there, as a sentence;
    /// empty on success. On failure there is neither a file nor a row of the register.
    std::string StoreLines(const std::vector<std::string>& lines);
    std::string StoreBytes(std::string_view bytes);

private:
    std::string FindDriver();
    std::string FindPlace();
    template <class Write>
    std::string Store(Write write);

    const Options& Options_;
    std::unique_ptr<backends::headless::FormlessDevice> Device_;
    std::string Driver_, File_, Header_;
    Text FullName_; ///< of the file
    std::vector<values::FieldRow> Fields_;
};

} // namespace importer
