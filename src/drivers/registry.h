// SPDX-License-Identifier: MIT
// The installed drivers: the table "drivers.txt", one row a driver, with its name and the file of its inf table.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modQuorin {

struct RegistryState {
    /// Names of the installed drivers, or of the packages found; entry n has index n-1. Each list routine writes it.
    std::vector<Text> DriverNames;
};
inline RegistryState Registry;

/// Creates the drivers table and the register of downloads again, with only their headers. Their contents are lost.
void CreateBlankDriversFile();

/// Fills DriverNames in the order of the rows. If there is no drivers table, both tables are created.
void LoadDriverList();

/// Fills a driver screen and selects the driver of its current row.
void ShowDriverList(const Text& title);

/// Shows a driver's row on ScrDriverProperties and leaves the drivers table open at that row. Does nothing for an empty
/// name.
void EditDriver(const Text& name);

/// Adds an untitled driver and shows its row.
void NewDriver();

/// Adds the row of a driver whose inf file is there. For what adds a driver from outside of the form: the open table is
/// closed. Returns false if it could not be written.
bool TakeUpDriver(const Text& name, const Text& infFile);

/// Deletes a driver and its inf file, after asking twice. Its downloads stay on disk and in their register. The name is
/// passed by value, because the selection may change while the questions are open.
void DeleteDriver(Text name);

/// Handles "Save" on ScrDriverProperties: saves the row and opens the driver's inf table.
void SaveDriverProperties();

} // namespace modQuorin
