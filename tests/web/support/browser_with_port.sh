#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A browser that finds the pseudo terminal QUORIN_TERMINAL where the machine has its first serial port, and that lets
# pages of QUORIN_ORIGIN open it unasked. Only this browser sees it so: the mounts are those of its own name space.
set -euo pipefail
if [ "${1:-}" != inside ]; then
  exec unshare --mount --propagation private "$0" inside "$@"
fi
shift
mount --bind "$QUORIN_TERMINAL" /dev/ttyS0
mount -t tmpfs none /etc/chromium
mkdir -p /etc/chromium/policies/managed
echo "{\"SerialAllowAllPortsForUrls\":[\"$QUORIN_ORIGIN\"]}" >/etc/chromium/policies/managed/port.json
exec "${QUORIN_BROWSER:-/usr/bin/chromium}" "$@"
