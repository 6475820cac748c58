// SPDX-License-Identifier: MIT
// How wide the characters of the form's font are, as parts of its size. The page draws by the same measures: no hinting,
// and no pair of letters moved together.
export const Family = '"Segoe UI", Roboto, "Noto Sans", "DejaVu Sans", system-ui, sans-serif';

const MeasuredAt = 100; // pixels
const Ranges = [[0x20, 0x52f], [0x2000, 0x22ff]];

export function prepareText(context, pixels) {
  context.font = `${pixels}px ${Family}`;
  context.fontKerning = 'none';
  context.textRendering = 'geometricPrecision';
  context.textBaseline = 'alphabetic';
  context.letterSpacing = '0.001px'; // letters are not joined then
}

export function measureFonts() {
  const context = document.createElement('canvas').getContext('2d');
  prepareText(context, MeasuredAt);
  const part = (code) => Number((context.measureText(String.fromCharCode(code)).width / MeasuredAt).toFixed(4));
  const height = context.measureText('Hg');
  return {
    ascent: height.fontBoundingBoxAscent / MeasuredAt,
    descent: height.fontBoundingBoxDescent / MeasuredAt,
    other: part(0x4e2d),
    ranges: Ranges.map(([first, last]) => ({
      first,
      widths: Array.from({ length: last - first + 1 }, (_, i) => part(first + i)),
    })),
  };
}
