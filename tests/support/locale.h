// SPDX-License-Identifier: MIT
// Tests run under the locale of the environment: nothing that the program compares, counts, dates or writes may depend
// on it.
#pragma once

namespace support {

/// Makes the environment's locale this process's, in C and in C++. A locale that the machine does not have is let be,
/// unless it is the one that QUORIN_LOCALE names: then this is no run under that locale, and the answer is false, with
/// a message.
bool TakeLocale();

} // namespace support
