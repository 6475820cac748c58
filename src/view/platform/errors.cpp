// SPDX-License-Identifier: MIT
#include "src/view/platform/errors.h"

namespace platform {

Text ErrorText(ErrorNumber error) {
    switch (error) {
    case FileNotFound:
        return u"it does not exist";
    case WentStale:
        return u"the connection to it was lost";
    case Damaged:
        return u"it is damaged, or a file of another kind";
    case InUse:
    case ReadKept:
        return u"another program is using it";
    case DeviceFailed:
        return u"the device failed";
    case FileExists:
        return u"it already exists";
    case TooLong:
        return u"it is too long, or a line of it is";
    case DiskFull:
        return u"the disk is full";
    case FileChanged:
        return u"another program has changed it";
    case RowNotFound:
        return u"the row is not in the file";
    case NotAvailable:
        return u"it is not available";
    case PermissionDenied:
        return u"permission denied";
    case PathRefused:
        return u"the name is not allowed";
    case PathNotFound:
        return u"its folder is gone";
    default:
        return u"error " + modStringTools::NumberText(NumberOf(error));
    }
}

} // namespace platform
