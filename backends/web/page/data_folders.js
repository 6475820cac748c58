// SPDX-License-Identifier: MIT
// The folders that the browser keeps for this origin. One page at a time has a folder: the one that holds its lock.

export const Own = 'quorin';
export const Demo = 'quorin-demo';

/// The folder of this page, by its address. A worker has another address: it is told.
export const folderOfPage = () => (new URLSearchParams(location.search).has('demo') ? Demo : Own);

export const lockOf = (folder) => `${folder} data`;
