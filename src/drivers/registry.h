// SPDX-License-Identifier: MIT
// The installed drivers: the table "drivers.txt", one row a driver, with its name and the file of its inf table.
#pragma once

#include "src/text/text.h"

#include <vector>

namespace modQuorin {

struct RegistryState {
    /// Names of the installed drivers, or of the packages found; entry n stands at n less 1. Written by whoever lists.
    std::vector<Text> DriverNames;
};
inline RegistryState Registry;

/// Makes the drivers table and the register of downloads anew, with their headers alone. What was in them is lost.
void CreateBlankDriversFile();

/// Fills DriverNames in the order of the rows, making the standing tables when there is no drivers table.
void LoadDriverList();

/// Fills a driver screen and takes the driver of its current row in hand.
void ShowDriverList(const Text& title);

/// Shows a driver's row on ScrDriverProperties, with the drivers table left open on it. Nothing for an empty name.
void EditDriver(const Text& name);

/// Adds an untitled driver and shows its row.
void NewDriver();

/// Deletes a driver and its inf file after two questions. Its downloads stay on disk and in their register. By value:
/// the selection may move while the questions stand.
void DeleteDriver(Text name);

/// "Save" on ScrDriverProperties: saves the row and moves on to the driver's inf table.
void SaveDriverProperties();

} // namespace modQuorin
