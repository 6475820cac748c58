// SPDX-License-Identifier: MIT
// A data folder with a driver of two fields and an empty download, and what a person types there.

const lines = (...texts) => texts.join('\n') + '\n';

export const meterFiles = {
  '/data/Quorin/drivers.txt': lines('NAME|INFFILE', 'Meter|meter.txt'),
  '/data/Quorin/qrnctrl.txt': lines('DRIVER|FILE|DATE|ALIAS', 'Meter|qrn0001.txt|20070301|'),
  '/data/Quorin/meter.txt':
    lines('FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA', 'Place|1||||||', 'Count|1||||||'),
  '/data/Quorin/qrn0001.txt': lines('Place|Count', '|'),
};

export const OpenDownload = ['choose Start...', 'choose Ok', 'choose Open'];
export const record = (number) => ['tap 0 1', `set place ${number}`, 'tap 1 1', `set ${number}`, 'choose New Record'];
export const session = (count) =>
  [...OpenDownload, ...Array.from({ length: count }, (_, i) => record(i + 1)).flat(), 'choose Close'];

/// The numbers of the rows of a download, in their order.
export const numbersIn = (download) =>
  download.split('\n').slice(1).filter((row) => /\d/.test(row)).map((row) => Number(row.split('|')[1]));
