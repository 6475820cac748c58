// SPDX-License-Identifier: MIT
// Tests run under the locale of the environment: nothing that the program compares, counts, dates or writes may depend
// on it.
#pragma once

namespace support {

/// Sets the locale of this process to the environment's, in C and in C++. A locale that the machine lacks is ignored.
/// If QUORIN_LOCALE names a locale and it was not set, prints a message and returns false.
bool TakeLocale();

} // namespace support
