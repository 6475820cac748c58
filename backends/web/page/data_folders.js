// SPDX-License-Identifier: MIT
// The folders that the browser keeps for this origin. One page at a time has a folder: the one that holds its lock.

export const Own = 'quorin';
export const Demo = 'quorin-demo';

export const lockOf = (folder) => `${folder} data`;
