// SPDX-License-Identifier: MIT
#include "tests/system/power_loss/scarce_memory.h"

#include <sqlite3.h>

namespace disk {

namespace {

struct Memory {
    bool On = false;
    int At = 0;
    Scarce How = Scarce::Once;
    int Asked = 0;
};
Memory Now;
sqlite3_mem_methods Usual;

bool Fails() {
    if (!Now.On)
        return false;
    ++Now.Asked;
    return Now.Asked == Now.At || (Now.How == Scarce::FromThereOn && Now.Asked > Now.At);
}

void* Allocate(int size) {
    return Fails() ? nullptr : Usual.xMalloc(size);
}

void* Enlarge(void* memory, int size) {
    return Fails() ? nullptr : Usual.xRealloc(memory, size);
}

/// Replaces SQLite's allocator, which is possible only before SQLite is first used.
const bool Installed = [] {
    if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &Usual) != SQLITE_OK)
        return false;
    sqlite3_mem_methods own = Usual;
    own.xMalloc = Allocate;
    own.xRealloc = Enlarge;
    return sqlite3_config(SQLITE_CONFIG_MALLOC, &own) == SQLITE_OK;
}();

} // namespace

ScarceMemory::ScarceMemory(int at, Scarce how) {
    Now = {Installed, at, how, 0};
}

ScarceMemory::~ScarceMemory() {
    Now.On = false;
}

bool ScarceMemory::Struck() {
    return Now.Asked >= Now.At;
}

} // namespace disk
