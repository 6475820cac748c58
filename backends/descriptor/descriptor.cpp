// SPDX-License-Identifier: MIT
#include "backends/descriptor/descriptor.h"

#include <unistd.h>

namespace backends {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    if (this != &other) {
        Close();
        Number_ = other.Number_;
        other.Number_ = -1;
    }
    return *this;
}

int Descriptor::Close() {
    if (Number_ < 0)
        return 0;
    const int closed = ::close(Number_);
    Number_ = -1;
    // An interrupted close has released the descriptor too.
    return closed == 0 || errno == EINTR ? 0 : errno;
}

} // namespace backends
