// SPDX-License-Identifier: MIT
// Draws a grid on its canvas, in pixels of the screen.
import { prepareText } from './fonts.js';

const LineColour = '#c8c8c8';

/// Places an element over a box of the form.
export function placeOver(element, [left, top, width, height], scale) {
  Object.assign(element.style, {
    left: `${left * scale}px`,
    top: `${top * scale}px`,
    width: `${width * scale}px`,
    height: `${height * scale}px`,
  });
}

function drawCell(context, cell, grid) {
  const [x, y, width, height] = cell.box;
  context.save();
  context.beginPath();
  context.rect(x, y, width, height);
  context.clip();
  context.fillStyle = cell.ground;
  context.fillRect(x, y, width, height);
  if (grid.lined) {
    context.fillStyle = LineColour;
    context.fillRect(x, y + height - 1, width, 1);
    context.fillRect(x + width - 1, y, 1, height);
  }
  if (cell.frame) {
    context.strokeStyle = cell.frame;
    context.strokeRect(x + 0.5, y + 0.5, width - 1, height - 1);
  }
  for (const [left, base, colour, text] of cell.lines) drawText(context, left, base, colour, text, grid.font.stretch);
  context.restore();
}

function drawText(context, x, y, colour, text, stretch) {
  context.fillStyle = colour;
  context.save();
  context.translate(x, y);
  context.scale(stretch, 1);
  context.fillText(text, 0, 0);
  context.restore();
}

export function drawGrid(canvas, grid, scale) {
  canvas.hidden = grid === null;
  if (grid === null) return;
  placeOver(canvas, grid.box, scale);
  const dense = scale * devicePixelRatio;
  canvas.width = Math.round(grid.box[2] * dense);
  canvas.height = Math.round(grid.box[3] * dense);
  const context = canvas.getContext('2d', { alpha: false });
  context.fillStyle = '#ffffff';
  context.fillRect(0, 0, canvas.width, canvas.height);
  context.scale(dense, dense);
  prepareText(context, grid.font.pixels);
  for (const cell of grid.cells) drawCell(context, cell, grid);
}
