// SPDX-License-Identifier: MIT
// Preloaded into a program with a window: ends it as soon as its first frame has been painted and is to be shown. The
// run time of the program is then the time to its first frame, measured in the same way for every program.
#include <QBackingStore>

#include <unistd.h>

void QBackingStore::flush(const QRegion&, QWindow*, const QPoint&) {
    ::_exit(0);
}
