// SPDX-License-Identifier: MIT
// System calls that emscripten's library has, but not as this program needs them: its poll never waits, its fdatasync
// brings nothing to the medium, and neither knows the files of node. Linked by --js-library.
//
// Module.wake is an Int32Array of one number in shared memory. Whoever makes a stream readable from another thread adds
// one to it and calls Atomics.notify; a program of node has none and sleeps.
const { library } = LibraryManager;
mergeInto(library, {
  $WAITING__deps: ['$FS'],
  $WAITING: {
    // A file of node has no operations of its own: the library below it can always be asked.
    readiness: function(fd) {
      var stream = FS.getStream(fd);
      if (!stream) return {{{ cDefine('POLLNVAL') }}};
      if (stream.stream_ops && stream.stream_ops.poll) return stream.stream_ops.poll(stream);
      return {{{ cDefine('POLLIN') }}} | {{{ cDefine('POLLOUT') }}};
    },
    look: function(fds, count) {
      var ready = 0;
      for (var i = 0; i < count; i++) {
        var entry = fds + {{{ C_STRUCTS.pollfd.__size__ }}} * i;
        var fd = {{{ makeGetValue('entry', C_STRUCTS.pollfd.fd, 'i32') }}};
        var wanted = {{{ makeGetValue('entry', C_STRUCTS.pollfd.events, 'i16') }}};
        var always = {{{ cDefine('POLLERR') }}} | {{{ cDefine('POLLHUP') }}} | {{{ cDefine('POLLNVAL') }}};
        var found = fd < 0 ? 0 : WAITING.readiness(fd) & (wanted | always);
        if (found) ready++;
        {{{ makeSetValue('entry', C_STRUCTS.pollfd.revents, 'found', 'i16') }}};
      }
      return ready;
    },
    wake: function() {
      return Module['wake'] || (Module['wake'] = new Int32Array(new SharedArrayBuffer(4)));
    },
    sync: function(fd) {
      var stream = FS.getStream(fd);
      if (!stream) return {{{ cDefine('EBADF') }}};
      if (stream.stream_ops) return stream.stream_ops.fsync ? -stream.stream_ops.fsync(stream) : 0;
      fs.fsyncSync(stream.nfd);
      return 0;
    },
  },

  // The count is read before the streams: what comes in between ends the wait at once.
  __syscall_poll__deps: ['$WAITING'],
  __syscall_poll: function(fds, count, timeout) {
    var end = timeout < 0 ? Infinity : Date.now() + timeout;
    for (;;) {
      var wake = WAITING.wake();
      var seen = Atomics.load(wake, 0);
      var ready = WAITING.look(fds, count);
      var left = end - Date.now();
      if (ready || left <= 0) return ready;
      Atomics.wait(wake, 0, seen, left);
    }
  },

  __syscall_fdatasync__deps: ['$WAITING'],
  __syscall_fdatasync: function(fd) { return -WAITING.sync(fd); },

  fd_sync__deps: ['$WAITING'],
  fd_sync: function(fd) { return WAITING.sync(fd); },
});
