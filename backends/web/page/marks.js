// SPDX-License-Identifier: MIT
// What the page knows from one start to the next, apart from the data of the program: a browser that removes that to get
// room leaves these marks. A browser that keeps none for this page just does not know.

/// Returns null if there is no mark of this name. `storage`: "sessionStorage" for a mark of this tab.
export function readMark(name, storage = 'localStorage') {
  try {
    return JSON.parse(window[storage].getItem(name));
  } catch {
    return null;
  }
}

export function writeMark(name, value, storage = 'localStorage') {
  try {
    window[storage].setItem(name, JSON.stringify(value));
  } catch {
    // see above
  }
}
