// SPDX-License-Identifier: MIT
#include "tests/unit/apps/quorin-driver/driver_run.h"

#include <cstdlib>
#include <sys/wait.h>

namespace driver {

Outcome DriverProgram::Run(const std::string& words, const std::string& before) {
    const std::string command = before + " cd '" + Folder.Path() + "' && timeout 60 '" QUORIN_DRIVER "' " + words +
                                " </dev/null >'" + Streams_.Path("output") + "' 2>'" + Streams_.Path("errors") + "'";
    const int status = std::system(command.c_str());
    return {WEXITSTATUS(status), Streams_.Bytes("output"), Streams_.Bytes("errors")};
}

} // namespace driver
