// SPDX-License-Identifier: MIT
// Files that last, for a program in a worker: a file system of emscripten over the files that a browser keeps for a page
// (its origin private file system). The program blocks and can't wait for a promise, so that a number of these files, the
// pool, is opened before it starts; each holds one file or folder of the program, or is free.
//
//   bytes 0 and 2048    the two slots of its header: length and CRC-32 of a JSON text (two little-endian numbers), and the
//                       text: generation, id, parent (the id of its folder), name, mode, time; or generation alone if free
//   byte 4096 on        its content
//
// A header is written into the slot of the older one, so that a write that is cut leaves that one valid. A rename is a
// header of a higher generation: of two files that claim a name the higher one has it, so that a name never has nothing
// behind it. Names and folders are on the medium when rename returns, contents when fsync does.

const SlotBytes = 2048;
const ContentStart = 2 * SlotBytes;
const RootId = 1;
const FolderMode = 0o040000;
const LinkMode = 0o120777;

/// Of errno in emscripten's C library.
const Errno = { EINVAL: 28, EIO: 29, ENOENT: 44, ENOSPC: 51, ENOTEMPTY: 55, EPERM: 63 };

const CrcTable = Uint32Array.from({ length: 256 }, (_, value) => {
  for (let bit = 0; bit < 8; bit++) value = value & 1 ? (value >>> 1) ^ 0xedb88320 : value >>> 1;
  return value;
});

function crc32(bytes) {
  let sum = 0xffffffff;
  for (const byte of bytes) sum = CrcTable[(sum ^ byte) & 255] ^ (sum >>> 8);
  return (sum ^ 0xffffffff) >>> 0;
}

/// Returns what a slot says; null if nothing valid stands in it.
function readSlot(handle, slot) {
  const bytes = new Uint8Array(SlotBytes);
  if (handle.read(bytes, { at: slot * SlotBytes }) < 8) return null;
  const numbers = new DataView(bytes.buffer);
  const length = numbers.getUint32(0, true);
  if (length > SlotBytes - 8) return null;
  const text = bytes.subarray(8, 8 + length);
  if (crc32(text) !== numbers.getUint32(4, true)) return null;
  try {
    return JSON.parse(new TextDecoder().decode(text));
  } catch {
    return null;
  }
}

/// One file of the pool.
class PoolFile {
  constructor(handle) {
    this.handle = handle;
    this.openings = 0;
    this.inUse = false;
    const headers = [readSlot(handle, 0), readSlot(handle, 1)];
    const newer = (headers[1]?.generation ?? 0) > (headers[0]?.generation ?? 0) ? 1 : 0;
    this.slot = newer;
    this.header = headers[newer] ?? { generation: 0 };
    this.isOnMedium = this.header.generation === 0; // an earlier run may have ended before it was
  }

  write(header) {
    const text = new TextEncoder().encode(JSON.stringify(header));
    const bytes = new Uint8Array(8 + text.length);
    const numbers = new DataView(bytes.buffer);
    numbers.setUint32(0, text.length, true);
    numbers.setUint32(4, crc32(text), true);
    bytes.set(text, 8);
    this.slot = 1 - this.slot;
    this.header = header;
    this.isOnMedium = false;
    if (this.handle.write(bytes, { at: this.slot * SlotBytes }) !== bytes.length) throw new DOMException('', 'QuotaExceededError');
  }
}

/// Opens the pool in a folder of the origin's files: those that are there, and as many new ones as `spare` asks for.
/// Returns the handles; the browser gives each to one opener at a time.
export async function openPool(folder, spare) {
  const names = [];
  for await (const [name, entry] of folder.entries()) {
    if (entry.kind === 'file' && /^\d+$/.test(name)) names.push(name);
  }
  const open = async (name) =>
    (await folder.getFileHandle(name, { create: true })).createSyncAccessHandle();
  const handles = await Promise.all(names.map(open));
  const free = handles.filter((handle) => {
    const file = new PoolFile(handle);
    return file.header.id === undefined;
  }).length;
  let next = names.reduce((most, name) => Math.max(most, Number(name)), 0);
  const added = [];
  for (let count = free; count < spare; count++) added.push(String(++next));
  return handles.concat(await Promise.all(added.map(open)));
}

/// Returns the file system over these handles, for FS.mount. `counted` is called with the number of files of the program
/// when it was mounted, and whenever that changes.
export function originFiles(FS, handles, counted = () => {}) {
  const pool = handles.map((handle) => new PoolFile(handle));
  const free = [];
  const unflushed = new Set();
  let generation = pool.reduce((most, file) => Math.max(most, file.header.generation), 0);
  let lastId = pool.reduce((most, file) => Math.max(most, file.header.id ?? 0), RootId);

  const fail = (name) => {
    throw new FS.ErrnoError(Errno[name]);
  };

  /// The browser's own failures become those of a medium.
  function onMedium(step) {
    try {
      return step();
    } catch (failure) {
      if (failure instanceof FS.ErrnoError || !(failure instanceof DOMException)) throw failure;
      fail(failure.name === 'QuotaExceededError' ? 'ENOSPC' : 'EIO');
    }
  }

  const flush = (file) => {
    file.handle.flush();
    file.isOnMedium = true;
    unflushed.delete(file);
  };

  function describe(file, { id, parent, name, mode, time }) {
    file.write({ generation: ++generation, id, parent, name, mode, time });
    unflushed.add(file);
  }

  const described = (node) =>
    ({ id: node.fileId, parent: node.parent.fileId, name: node.name, mode: node.mode, time: node.timestamp });

  /// Hidden folders are the program's own: what is in them is no data of the person's.
  function filesIn(folder) {
    return Object.values(folder.contents).reduce((sum, node) => {
      if (!FS.isDir(node.mode)) return sum + 1;
      return node.name.startsWith('.') ? sum : sum + filesIn(node);
    }, 0);
  }

  let top;
  let told;
  function count() {
    const files = filesIn(top);
    if (files !== told) counted(files);
    told = files;
  }

  function release(file) {
    file.write({ generation: ++generation });
    unflushed.add(file);
    file.inUse = false;
    if (file.openings === 0) empty(file);
  }

  function empty(file) {
    file.handle.truncate(ContentStart);
    free.push(file);
  }

  /// A file that was free only a moment ago is given on when the medium knows that: else its old name could come back
  /// with the new content.
  function takeFree() {
    const file = free.shift();
    if (!file) fail('ENOSPC');
    if (!file.isOnMedium) flush(file);
    file.inUse = true;
    return file;
  }

  function makeNode(parent, name, mode, file) {
    const node = FS.createNode(parent, name, mode, 0);
    const isFolder = FS.isDir(mode);
    node.node_ops = isFolder ? folderOperations : fileOperations;
    node.stream_ops = isFolder ? folderStreams : fileStreams;
    node.file = file;
    node.fileId = file ? file.header.id : RootId;
    node.timestamp = file?.header.time ?? Date.now();
    if (isFolder) node.contents = {};
    else node.size = Math.max(0, file.handle.getSize() - ContentStart);
    if (parent) parent.contents[name] = node;
    return node;
  }

  /// Of the files that claim a name the one with the highest generation has it; the others are free.
  function namedFiles() {
    const byName = new Map();
    for (const file of pool) {
      if (file.header.id === undefined) {
        free.push(file);
        continue;
      }
      const name = file.header.parent + '/' + file.header.name;
      const other = byName.get(name);
      const [winner, loser] = !other || other.header.generation < file.header.generation ? [file, other] : [other, file];
      byName.set(name, winner);
      if (loser) release(loser);
    }
    return [...byName.values()];
  }

  function mount() {
    const root = makeNode(null, '/', FolderMode | 0o777, null);
    const folders = new Map([[RootId, root]]);
    let waiting = onMedium(namedFiles);
    while (waiting.length > 0) {
      const later = [];
      for (const file of waiting) {
        const { id, parent, name, mode } = file.header;
        file.inUse = true;
        if (!folders.has(parent)) {
          later.push(file);
          continue;
        }
        const node = makeNode(folders.get(parent), name, mode, file);
        if (!FS.isDir(mode)) continue;
        folders.set(id, node);
        unflushed.add(file);
      }
      if (later.length === waiting.length) {
        adopt(root, later);
        break;
      }
      waiting = later;
    }
    top = root;
    count();
    return root;
  }

  /// A file whose folder is not on the medium is put where it is found.
  function adopt(root, files) {
    for (const file of files) {
      const name = 'found-' + file.header.id + '-' + file.header.name;
      onMedium(() => describe(file, described(makeNode(root, name, file.header.mode, file))));
    }
  }

  function attributes(node) {
    const time = new Date(node.timestamp);
    const size = FS.isDir(node.mode) ? 4096 : node.size;
    return {
      dev: 1, ino: node.fileId, mode: node.mode, nlink: 1, uid: 0, gid: 0, rdev: 0, size,
      atime: time, mtime: time, ctime: time, blksize: 4096, blocks: Math.ceil(size / 512),
    };
  }

  function resize(node, size) {
    onMedium(() => node.file.handle.truncate(ContentStart + size));
    node.size = size;
  }

  function setAttributes(node, wanted) {
    if (wanted.mode !== undefined) node.mode = wanted.mode;
    if (wanted.timestamp !== undefined) node.timestamp = wanted.timestamp;
    if (wanted.size !== undefined) resize(node, wanted.size);
    if (wanted.mode !== undefined && node.file) onMedium(() => describe(node.file, described(node)));
  }

  const fileOperations = { getattr: attributes, setattr: setAttributes };

  const isEmpty = (node) => Object.keys(node.contents).length === 0;

  const folderOperations = {
    getattr: attributes,
    setattr: setAttributes,
    lookup: () => fail('ENOENT'), // what is there, FS has been told
    mknod(parent, name, mode) {
      if (!FS.isDir(mode) && !FS.isFile(mode)) fail('EPERM');
      const file = onMedium(takeFree);
      onMedium(() => describe(file, { id: ++lastId, parent: parent.fileId, name, mode, time: Date.now() }));
      const node = makeNode(parent, name, mode, file);
      count();
      return node;
    },
    rename(node, folder, name) {
      const before = folder.contents[name];
      if (before && FS.isDir(before.mode) && !isEmpty(before)) fail('ENOTEMPTY');
      onMedium(() => {
        describe(node.file, { ...described(node), parent: folder.fileId, name });
        flush(node.file);
      });
      delete node.parent.contents[node.name];
      node.name = name;
      node.parent = folder;
      if (before) {
        FS.hashRemoveNode(before);
        onMedium(() => release(before.file));
      }
      folder.contents[name] = node;
      count();
    },
    unlink(folder, name) {
      onMedium(() => release(folder.contents[name].file));
      delete folder.contents[name];
      count();
    },
    rmdir(folder, name) {
      if (!isEmpty(folder.contents[name])) fail('ENOTEMPTY');
      folderOperations.unlink(folder, name);
    },
    readdir: (node) => ['.', '..', ...Object.keys(node.contents)],
  };

  function seek(stream, offset, whence) {
    const base = whence === 1 ? stream.position : whence === 2 ? stream.node.size ?? 0 : 0;
    if (base + offset < 0) fail('EINVAL');
    return base + offset;
  }

  const bytesOf = (buffer, offset, length) => new Uint8Array(buffer.buffer, buffer.byteOffset + offset, length);

  const fileStreams = {
    open: (stream) => {
      stream.node.file.openings++;
    },
    close: (stream) => {
      const file = stream.node.file;
      file.openings--;
      if (!file.inUse && file.openings === 0) onMedium(() => empty(file));
    },
    llseek: seek,
    read: (stream, buffer, offset, length, position) => {
      const count = Math.min(length, Math.max(0, stream.node.size - position));
      if (count === 0) return 0;
      return onMedium(() =>
        stream.node.file.handle.read(bytesOf(buffer, offset, count), { at: ContentStart + position }));
    },
    write: (stream, buffer, offset, length, position) => {
      if (length === 0) return 0;
      const node = stream.node;
      const count = onMedium(() =>
        node.file.handle.write(bytesOf(buffer, offset, length), { at: ContentStart + position }));
      node.size = Math.max(node.size, position + count);
      node.timestamp = Date.now();
      if (count === 0) fail('ENOSPC');
      return count;
    },
    allocate: (stream, offset, length) => {
      if (offset + length > stream.node.size) resize(stream.node, offset + length);
    },
    fsync: (stream) => {
      onMedium(() => {
        const node = stream.node;
        if (node.file.inUse && node.file.header.time !== node.timestamp) describe(node.file, described(node));
        for (const file of [...unflushed]) if (FS.isDir(file.header.mode ?? 0)) flush(file);
        flush(node.file);
      });
      return 0;
    },
  };

  const folderStreams = {
    llseek: seek,
    fsync: () => {
      onMedium(() => [...unflushed].forEach(flush));
      return 0;
    },
  };

  return { mount };
}

/// Lets a path lead through /proc/self/fd/N to what is beneath an open folder, as on Linux: emscripten's own entries there
/// are links of no kind, which end a path.
export function reachFoldersByDescriptor(FS) {
  const descriptors = FS.lookupPath('/proc/self/fd').node;
  const lookup = descriptors.node_ops.lookup;
  descriptors.node_ops.lookup = (parent, name) => Object.assign(lookup(parent, name), { mode: LinkMode });
}
