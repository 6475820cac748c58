// SPDX-License-Identifier: MIT
// Preloaded into a program with a window: ends it as soon as its first frame has been painted and is to be shown. What
// is measured then is all that comes before, as a person sees it, and in any program alike.
#include <QBackingStore>

#include <unistd.h>

void QBackingStore::flush(const QRegion&, QWindow*, const QPoint&) {
    ::_exit(0);
}
