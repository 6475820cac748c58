// SPDX-License-Identifier: MIT
// The bytes are the address of a port, as a person writes it. An accepted address is the same after it was written and
// read again; a refused one has a reason.
#include "backends/serial/port_address.h"
#include "fuzz/technician.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const auto first = backends::ReadAddress(fuzz::AsString(bytes, count));
    fuzz::Must(first.Address.has_value() == first.Error.empty(), "there is an address or a reason, and not both");
    if (first.Address) {
        const auto again = backends::ReadAddress(backends::AddressText(*first.Address));
        fuzz::Must(again.Address == first.Address, "the written address is another one");
    }
    return 0;
}
